# Completion of the lumisk command.
set -l commands open page describe snapshot integrate
set -l first "not __fish_seen_subcommand_from $commands"
complete -c lumisk -n $first -a open -d 'Show items in the preview window'
complete -c lumisk -n $first -a page -d 'Write the finished page of a file'
complete -c lumisk -n $first -a describe -d 'Write an outline of the preview'
complete -c lumisk -n $first -a snapshot -d 'Write a picture of the preview'
complete -c lumisk -n $first -a integrate -d 'Make Lumisk the previewer of the file manager'
complete -c lumisk -n $first -l help -d 'Show a summary'
complete -c lumisk -n $first -l version -d 'Show the version'

set -l shows '__fish_seen_subcommand_from page describe snapshot'
complete -c lumisk -n $shows -l dark -d 'Dark colours'
complete -c lumisk -n $shows -l light -d 'Light colours'
complete -c lumisk -n '__fish_seen_subcommand_from page' -l mode -x -a 'formatted text'
complete -c lumisk -n '__fish_seen_subcommand_from describe snapshot' -l mode -x \
  -a 'formatted text rendered source'
complete -c lumisk -n '__fish_seen_subcommand_from snapshot' -l size -x -a '800x600'
complete -c lumisk -n '__fish_seen_subcommand_from integrate' -f -l remove -d 'Take it back'
complete -c lumisk -n '__fish_seen_subcommand_from integrate' -f -l status -d 'Say how it stands'
