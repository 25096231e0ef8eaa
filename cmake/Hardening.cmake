# What makes a fault harder to exploit. Every build has it, so that what is tested is what is installed: tests/package/hardening
# and tests/windows/dll_hardening check the result.
add_compile_options(-fstack-protector-strong)
add_compile_definitions(_GLIBCXX_ASSERTIONS)
string(TOUPPER "${CMAKE_BUILD_TYPE}" type)
if(NOT ORVE_SANITIZE AND "${CMAKE_CXX_FLAGS_${type}}" MATCHES "-O[123s]")
  # Without optimisation it can do nothing, and the sanitizers have checks of their own.
  add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2) # some compilers define it themselves
endif()

if(WIN32)
  # The linker's default, set here so that it stays. Control-flow guard is unknown to GCC, and on Windows it touches every page of
  # a large frame anyway.
  add_link_options(-fstack-protector-strong -Wl,--dynamicbase,--nxcompat)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    add_link_options(-Wl,--high-entropy-va)
  endif()
else()
  include(CheckPIESupported)
  check_pie_supported(LANGUAGES CXX)
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
  add_compile_options(-fstack-clash-protection)
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|i.86")
    add_compile_options(-fcf-protection)
  endif()
  add_link_options(-Wl,-z,relro,-z,now)
endif()
