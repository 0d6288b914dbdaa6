# vtn_delay_load(LIBRARY FUNCTION...): a target delayed_LIBRARY that imports these functions of a library of Windows, which
# is loaded when the first of them is called. Linked in place of the ordinary import library.
function(vtn_delay_load library)
  list(JOIN ARGN "\n" functions)
  set(directory "${CMAKE_BINARY_DIR}/delayed")
  set(definitions "${directory}/${library}.def")
  set(import_library "${directory}/lib${library}.a")
  file(GENERATE OUTPUT "${definitions}" CONTENT "LIBRARY ${library}.dll\nEXPORTS\n${functions}\n")
  # It names its symbols after the path of what it makes, so that path is a relative one.
  add_custom_command(OUTPUT "${import_library}"
    COMMAND "${CMAKE_DLLTOOL}" -k -d ${library}.def -y lib${library}.a -D ${library}.dll
    WORKING_DIRECTORY "${directory}" DEPENDS "${definitions}" VERBATIM)
  add_custom_target(make_delayed_${library} DEPENDS "${import_library}")
  add_library(delayed_${library} STATIC IMPORTED GLOBAL)
  set_target_properties(delayed_${library} PROPERTIES IMPORTED_LOCATION "${import_library}")
  add_dependencies(delayed_${library} make_delayed_${library})
endfunction()
