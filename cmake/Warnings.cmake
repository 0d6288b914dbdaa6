# vtn_warnings(TARGET): the warnings that every target of this project is built with, all of them errors.
function(vtn_warnings target)
  target_compile_options(${target} PRIVATE
    $<$<COMPILE_LANGUAGE:CXX>:
      -Wall -Wextra -Wpedantic -Werror
      -Wshadow -Wconversion -Wsign-conversion -Wnarrowing
      -Wnon-virtual-dtor -Woverloaded-virtual -Wsuggest-override
      -Wold-style-cast -Wcast-align -Wcast-qual -Wformat=2
      -Wnull-dereference -Wimplicit-fallthrough -Wmissing-declarations
      $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wduplicated-branches -Wlogical-op>>)
endfunction()
