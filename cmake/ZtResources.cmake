# Resources of modules, for this project and for those that find its package.

# zt_add_resources(TARGET NAME name TYPE type FILE file [LANGUAGE number])
# Gives the program or shared library TARGET the bytes of a file as a resource,
# each time it is linked. TARGET is of the directory that calls. It is linked
# anew when the file changes. The path of the file is taken from the calling
# directory. The language is 1033 unless it is given.
function(zt_add_resources target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "NAME;TYPE;FILE;LANGUAGE" "")
  foreach(needed NAME TYPE FILE)
    if("${arg_${needed}}" STREQUAL "")
      message(FATAL_ERROR "zt_add_resources(${target}): ${needed} is missing")
    endif()
  endforeach()
  if(DEFINED arg_UNPARSED_ARGUMENTS OR DEFINED arg_KEYWORDS_MISSING_VALUES)
    message(FATAL_ERROR "zt_add_resources(${target}): not understood: "
      "${arg_UNPARSED_ARGUMENTS} ${arg_KEYWORDS_MISSING_VALUES}")
  endif()
  if(NOT TARGET ${target})
    message(FATAL_ERROR "zt_add_resources: there is no target ${target}")
  endif()
  get_target_property(kind ${target} TYPE)
  if(NOT kind MATCHES "^(EXECUTABLE|SHARED_LIBRARY|MODULE_LIBRARY)$")
    message(FATAL_ERROR "zt_add_resources: ${target} is no program or shared library")
  endif()
  if(NOT DEFINED arg_LANGUAGE)
    set(arg_LANGUAGE 1033)
  endif()
  cmake_path(ABSOLUTE_PATH arg_FILE BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}" NORMALIZE)
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${arg_FILE}")
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND ZT::ztres put --language ${arg_LANGUAGE} --
            "$<TARGET_FILE:${target}>" "${arg_TYPE}" "${arg_NAME}" "${arg_FILE}"
    COMMENT "Resource ${arg_TYPE}/${arg_NAME} of ${target}"
    VERBATIM)
endfunction()
