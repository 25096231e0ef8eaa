# The shared libraries, made of the objects of the static parts: all parts without windows in liborve-mailserver.so, the windows
# in liborve-mailserver-qt.so, so that a server without a screen needs no Qt. With the sanitizers, which the libraries would have
# to be given by each program, there are none.
if(ORVE_SANITIZE)
  return()
endif()
configure_file("${CMAKE_CURRENT_LIST_DIR}/exported.map.in" "${PROJECT_BINARY_DIR}/exported.map" @ONLY)

# orve_shared_library(TARGET NAME COMPONENT PART...): lib<NAME>.so, packed in COMPONENT, and offered as orve-mailserver::NAME.
function(orve_shared_library target name component)
  list(TRANSFORM ARGN REPLACE "(.+)" "$<TARGET_OBJECTS:\\1>" OUTPUT_VARIABLE objects)
  add_library(${target} SHARED ${objects})
  add_library(orve-mailserver::${name} ALIAS ${target})
  set_target_properties(${target} PROPERTIES OUTPUT_NAME ${name} EXPORT_NAME ${name}
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
    LINK_DEPENDS "${PROJECT_BINARY_DIR}/exported.map")
  target_compile_features(${target} INTERFACE cxx_std_20)
  target_include_directories(${target} INTERFACE "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>"
                                                 "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
  # The archives bring the libraries that the parts are built on, and of their own only what is inside another shared library.
  target_link_libraries(${target} PRIVATE ${ARGN})
  target_link_options(${target} PRIVATE -Wl,--no-undefined -Wl,--as-needed -Wl,--exclude-libs,ALL
    "-Wl,--version-script=${PROJECT_BINARY_DIR}/exported.map"
    "-Wl,-Map=$<TARGET_FILE:${target}>.map") # what was linked in, for the bill of materials
  install(TARGETS ${target} EXPORT shared-${name}
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT ${component} NAMELINK_COMPONENT development)
  install(EXPORT shared-${name} FILE ${name}-shared.cmake NAMESPACE orve-mailserver::
    DESTINATION "${ORVE_CMAKE_DIR}" COMPONENT development)
endfunction()

get_property(parts GLOBAL PROPERTY ORVE_PARTS)
list(REMOVE_ITEM parts orve-qt)
orve_shared_library(orve-mailserver-shared orve-mailserver library ${parts})
if(TARGET orve-qt)
  orve_shared_library(orve-mailserver-qt-shared orve-mailserver-qt windows orve-qt)
  target_link_libraries(orve-mailserver-qt-shared PUBLIC orve-mailserver-shared)
endif()

# For pkg-config, wherever they are put: the way from their folder to the prefix. Who links statically uses CMake, which knows what the
# libraries below ours are built on.
file(RELATIVE_PATH ORVE_UP_TO_PREFIX "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
foreach(name orve-mailserver orve-mailserver-qt)
  configure_file("${CMAKE_CURRENT_LIST_DIR}/${name}.pc.in" "${PROJECT_BINARY_DIR}/${name}.pc" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/${name}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)
endforeach()
