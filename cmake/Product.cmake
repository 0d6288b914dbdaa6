# How what administrators install is compiled and linked.

# vtn_product_code(TARGET...): code travels in installation packages, so small comes before fast, and the C runtime's own
# formatting of numbers is enough. Overrun buffers end the process where they can be noticed.
function(vtn_product_code)
  foreach(target ${ARGN})
    target_compile_options(${target} PRIVATE
      $<$<AND:$<CONFIG:Release>,$<COMPILE_LANGUAGE:CXX>>:-Os -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>)
    target_compile_definitions(${target} PRIVATE __USE_MINGW_ANSI_STDIO=0)
  endforeach()
endfunction()

# vtn_product_file(TARGET...): Windows puts the file anywhere in the address space and runs no data. Without the time of the
# link, the same sources make the same bytes. Windows 7 is version 6.1.
function(vtn_product_file)
  foreach(target ${ARGN})
    target_link_options(${target} PRIVATE
      -Wl,--dynamicbase -Wl,--high-entropy-va -Wl,--nxcompat -Wl,--no-insert-timestamp
      -Wl,--major-os-version=6 -Wl,--minor-os-version=1
      -Wl,--major-subsystem-version=6 -Wl,--minor-subsystem-version=1
      $<$<CONFIG:Release>:-s>)
  endforeach()
endfunction()
