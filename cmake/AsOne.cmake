# vtn_compile_as_one(TARGET): its sources as one, which takes a third of the time where most of that goes into the same
# templates. What sources have for themselves then needs names of its own in each; that it may shadow what another source has
# is no mistake. Builds without precompiled headers, which show what a source lacks, keep sources apart.
function(vtn_compile_as_one target)
  if(NOT CMAKE_DISABLE_PRECOMPILE_HEADERS)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 0)
    target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-Wno-shadow>)
  endif()
endfunction()
