# Completion of the lumisk command.
_lumisk() {
  local cur prev words cword
  _init_completion -n = || return
  local command=''
  [ "$cword" -gt 1 ] && command=${words[1]}
  if [ "$prev" = --mode ]; then
    case $command in
      page) mapfile -t COMPREPLY < <(compgen -W 'formatted text' -- "$cur") ;;
      *) mapfile -t COMPREPLY < <(compgen -W 'formatted text rendered source' -- "$cur") ;;
    esac
    return
  fi
  local options=''
  case $command in
    '') options='open page describe snapshot integrate --help --version' ;;
    page | describe) options='--dark --light --mode --help' ;;
    snapshot) options='--dark --light --size --mode --help' ;;
    integrate) options='--remove --status --help' ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
  if [[ $cur != -* && $command != integrate ]]; then
    local -a offered=("${COMPREPLY[@]}")
    COMPREPLY=()
    _filedir
    COMPREPLY+=("${offered[@]}")
  fi
}
complete -F _lumisk lumisk
