# cmake -DRESOURCES=<ZtResources.cmake> -DFOLDER=<scratch folder> -P CheckRefusals.cmake
# Each wrong call of zt_add_resources ends the configuration and says why.

set(source "${CMAKE_CURRENT_LIST_DIR}/testdata/refusals")
file(REMOVE_RECURSE "${FOLDER}")

# refused(CALL TEXT): the call ends the configuration with the text.
function(refused call text)
  execute_process(
    COMMAND "${CMAKE_COMMAND}" "-DRESOURCES=${RESOURCES}" "-DCALL=${call}"
      -S "${source}" -B "${FOLDER}"
    RESULT_VARIABLE status OUTPUT_QUIET ERROR_VARIABLE errors)
  string(REGEX REPLACE "[ \n]+" " " errors "${errors}")
  string(FIND "${errors}" "${text}" place)
  if(status EQUAL 0 OR place LESS 0)
    message(SEND_ERROR "zt_add_resources(${call}): status ${status}, ${errors}")
  endif()
endfunction()

set(whole NAME n TYPE t FILE f)
refused("headers;TYPE;t;FILE;f" "zt_add_resources(headers): NAME is missing")
refused("headers;NAME;n;FILE;f" "zt_add_resources(headers): TYPE is missing")
refused("headers;NAME;n;TYPE;t" "zt_add_resources(headers): FILE is missing")
refused("headers;${whole};more" "zt_add_resources(headers): not understood: more")
refused("headers;${whole};LANGUAGE" "zt_add_resources(headers): not understood: LANGUAGE")
refused("nothing;${whole}" "zt_add_resources: there is no target nothing")
refused("headers;${whole}" "zt_add_resources: headers is no program or shared library")
