# The parts of the library, what each publishes to the others, and what is installed of them.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(ORVE_CMAKE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/orve-mailserver")

# orve_room(VARIABLE NAME FOLDER...): an include folder, made of links, in which FOLDERs are found below the names that they have
# in includes, and nothing else is. FOLDER is NAME=PATH, the path relative to the project.
function(orve_room variable name)
  set(room "${PROJECT_BINARY_DIR}/rooms/${name}")
  file(REMOVE_RECURSE "${room}") # what it no longer has
  foreach(folder IN LISTS ARGN)
    string(REGEX MATCH "^(.*)=(.*)$" _ "${folder}")
    cmake_path(GET CMAKE_MATCH_1 PARENT_PATH above)
    file(MAKE_DIRECTORY "${room}/${above}")
    file(CREATE_LINK "${PROJECT_SOURCE_DIR}/${CMAKE_MATCH_2}" "${room}/${CMAKE_MATCH_1}" SYMBOLIC)
  endforeach()
  set(${variable} "${room}" PARENT_SCOPE)
endfunction()

# orve_part(TARGET COMPONENT FOLDER...): what links the library TARGET finds its FOLDERs, and only these, so that a dependency
# that was not declared does not compile. find_package(orve-mailserver COMPONENTS COMPONENT) offers orve-mailserver::COMPONENT.
function(orve_part target component)
  orve_room(room ${component} orve-mailserver/api.h=include/orve-mailserver/api.h ${ARGN})
  target_include_directories(${target} PUBLIC "$<BUILD_INTERFACE:${room}>" "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
  add_library(orve-mailserver::${component} ALIAS ${target})
  if(WIN32)
    return()
  endif()
  set_property(GLOBAL APPEND PROPERTY ORVE_PARTS ${target})
  # A shared library offers what carries ORVE_API and nothing else.
  set_target_properties(${target} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  if(ORVE_RECORDED_TYPES)
    # What is compared with the recorded interface; where a variable lies at each step is for debuggers alone.
    target_compile_options(${target} PRIVATE -g -fno-var-tracking)
  endif()
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${component})
  install(TARGETS ${target} EXPORT orve-mailserver-${component}
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development)
  install(EXPORT orve-mailserver-${component} NAMESPACE orve-mailserver::
    DESTINATION "${ORVE_CMAKE_DIR}" COMPONENT development)
endfunction()

# orve_adapter(COMPONENT [NEEDS PART...] [USES PART...] [MODULES "NAME MODULE..."...] [FINDS "PACKAGE ARGUMENT..."...] [SOURCES FILE...]):
# the part in adapters/COMPONENT as target orve-COMPONENT, of the sources in its folder and SOURCES, with its public headers if it has any.
# Its own headers include those of the parts that it NEEDS, its sources alone those of the parts that it USES: core is the library,
# text its text operations, any other the adapter of that name. Its sources also get the modules of pkg-config, found as
# PkgConfig::NAME. What find_package is given for the libraries that it links by itself, FINDS repeats to programs over the installed part.
function(orve_adapter component)
  cmake_parse_arguments(ARG "" "" "NEEDS;USES;MODULES;FINDS;SOURCES" ${ARGN})
  set(target orve-${component})
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  add_library(${target} STATIC ${sources} ${ARG_SOURCES})
  set(folders "${component}=adapters/${component}")
  if(EXISTS "${PROJECT_SOURCE_DIR}/include/orve-mailserver/${component}")
    list(APPEND folders "orve-mailserver/${component}=include/orve-mailserver/${component}")
  endif()
  orve_part(${target} ${component} ${folders})

  set(installed)
  foreach(part IN LISTS ARG_NEEDS ARG_USES)
    set(link PRIVATE)
    if(part IN_LIST ARG_NEEDS)
      set(link PUBLIC)
    endif()
    if(part STREQUAL text) # nothing of it is installed
      target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:orve-text>)
      continue()
    elseif(part STREQUAL core)
      target_link_libraries(${target} ${link} orve-mailserver)
    else()
      target_link_libraries(${target} ${link} orve-${part})
    endif()
    string(APPEND installed "  _orve_component(${part})\n")
  endforeach()
  foreach(module IN LISTS ARG_MODULES)
    string(APPEND installed "  _orve_modules(${module})\n")
    separate_arguments(module UNIX_COMMAND "${module}")
    list(POP_FRONT module name)
    pkg_check_modules(${name} REQUIRED IMPORTED_TARGET ${module})
    target_link_libraries(${target} PRIVATE PkgConfig::${name})
  endforeach()
  foreach(package IN LISTS ARG_FINDS)
    string(APPEND installed "  find_dependency(${package})\n")
  endforeach()
  set_property(GLOBAL APPEND_STRING PROPERTY ORVE_BELOW_PARTS "macro(_orve_below_${component})\n${installed}endmacro()\n")
endfunction()

# orve_package(): what find_package reads first, and the Debian packages that `./dev package` makes.
function(orve_package)
  get_property(ORVE_BELOW_PARTS GLOBAL PROPERTY ORVE_BELOW_PARTS)
  configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/orve-mailserver-config.cmake.in"
    "${PROJECT_BINARY_DIR}/orve-mailserver-config.cmake" INSTALL_DESTINATION "${ORVE_CMAKE_DIR}")
  write_basic_package_version_file("${PROJECT_BINARY_DIR}/orve-mailserver-config-version.cmake"
    COMPATIBILITY SameMajorVersion)
  configure_file("${PROJECT_SOURCE_DIR}/cmake/version.h.in" "${PROJECT_BINARY_DIR}/version.h" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/version.h" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/orve-mailserver"
    COMPONENT development)
  install(FILES "${PROJECT_BINARY_DIR}/orve-mailserver-config.cmake"
    "${PROJECT_BINARY_DIR}/orve-mailserver-config-version.cmake"
    DESTINATION "${ORVE_CMAKE_DIR}" COMPONENT development)
  install(DIRECTORY include/ DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development FILES_MATCHING PATTERN "*.h")
  install(FILES README.md CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT program)
  install(FILES LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}" RENAME copyright COMPONENT program)
  install(FILES LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}-dev" RENAME copyright COMPONENT development)
  set(doc "${CMAKE_INSTALL_DATAROOTDIR}/doc")
  install(FILES LICENSE DESTINATION "${doc}/liborve-mailserver${PROJECT_VERSION_MAJOR}" RENAME copyright COMPONENT library)
  install(FILES LICENSE DESTINATION "${doc}/liborve-mailserver-qt${PROJECT_VERSION_MAJOR}" RENAME copyright COMPONENT windows)
  install(DIRECTORY docs/ DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs" COMPONENT program)
  install(FILES examples/elenco.csv DESTINATION "${CMAKE_INSTALL_DOCDIR}/examples" COMPONENT program)
  install(FILES examples/CMakeLists.txt examples/invia_fattura.cpp examples/invia_messaggio.cpp
    DESTINATION "${CMAKE_INSTALL_DOCDIR}-dev/examples" COMPONENT development)
endfunction()
