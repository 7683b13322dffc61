# lumisk_embed(TARGET FILE…)
#
# Turns each text file into "<folder>/<file name with dots as underscores>.inc", which defines the
# file as a list of literal pieces and slots; see tools/embed.cpp for the form.
function(lumisk_embed target)
  foreach(file IN LISTS ARGN)
    get_filename_component(name "${file}" NAME)
    string(REPLACE "." "_" name "${name}")
    set(output "${CMAKE_CURRENT_BINARY_DIR}/embedded/${name}.inc")
    add_custom_command(
      OUTPUT "${output}"
      COMMAND lumisk_embed_tool "${CMAKE_CURRENT_SOURCE_DIR}/${file}" "${output}"
      DEPENDS lumisk_embed_tool "${CMAKE_CURRENT_SOURCE_DIR}/${file}"
      COMMENT "Embedding ${file}"
      VERBATIM)
    target_sources(${target} PRIVATE "${output}")
  endforeach()
  target_include_directories(${target} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}")
endfunction()
