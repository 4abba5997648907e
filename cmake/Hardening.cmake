# What makes a fault that slipped through harder to use; in every release build, whichever way it was configured.
# tools/hardening says of a program whether it has all of it.
include(CheckCXXCompilerFlag)

set(released $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
set(compiled -fstack-protector-strong)
if(WIN32)
  set(linked -fstack-protector-strong -Wl,--dynamicbase,--nxcompat,--high-entropy-va)
else()
  # The undefining is for systems whose compiler defines it by itself.
  list(APPEND compiled -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3)
  set(linked -Wl,-z,relro,-z,now,-z,noexecstack)
  foreach(flag -fstack-clash-protection -fcf-protection=full)
    string(MAKE_C_IDENTIFIER "has${flag}" has)
    check_cxx_compiler_flag(${flag} ${has})
    if(${has})
      list(APPEND compiled ${flag})
    endif()
  endforeach()
  target_link_options(tembrel_settings INTERFACE
                      $<$<AND:${released},$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>>:-pie>)
endif()
target_compile_options(tembrel_settings INTERFACE "$<${released}:${compiled}>")
target_link_options(tembrel_settings INTERFACE "$<${released}:${linked}>")
