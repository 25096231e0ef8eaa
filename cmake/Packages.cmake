# The Debian packages that `./dev package` makes: the program, the shared libraries, and what a C++ application builds with.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orve-mailserver)
set(CPACK_PACKAGE_VENDOR "orve-mailserver maintainers")
set(CPACK_PACKAGE_CONTACT "orve-mailserver maintainers <maintainers@orve-mailserver.invalid>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_OUTPUT_FILE_PREFIX "${CMAKE_BINARY_DIR}/packages")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL program library windows development)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION mail)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
# A program built with the libraries needs them as new as they were then.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
# The library that the windows need is not installed while they are packed; their package names its own.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_BINARY_DIR}")

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME orve-mailserver)
set(CPACK_DEBIAN_PROGRAM_DESCRIPTION
"mail dispatch of a business application
orve-mail finds addresses in the application's master data, picks the
sender's account, fills the body, delivers over SMTP or the machine's
own mail system, to one party or to a list, and keeps a record.")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_DEPENDS "ca-certificates")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_RECOMMENDS "fonts-liberation, qt6-translations-l10n")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SUGGESTS "default-mta | mail-transport-agent, tdsodbc")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME liborve-mailserver${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION
"mail dispatch of a business application (shared library)
What finds addresses in an application's master data, fills the message
and delivers it, over SMTP, a database, a directory and the machine's
own mail system.")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_RECOMMENDS "ca-certificates")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SUGGESTS "default-mta | mail-transport-agent, tdsodbc, libsasl2-modules-gssapi-mit")

set(CPACK_DEBIAN_WINDOWS_PACKAGE_NAME liborve-mailserver-qt${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_WINDOWS_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_WINDOWS_DESCRIPTION
"mail dispatch of a business application (windows)
The windows in which a person completes a message, on Qt 6 Widgets.")
set(CPACK_DEBIAN_WINDOWS_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_WINDOWS_PACKAGE_RECOMMENDS "fonts-liberation, qt6-translations-l10n")
set(CPACK_COMPONENT_WINDOWS_DEPENDS library)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME orve-mailserver-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
"mail dispatch of a business application (development files)
Headers of the library that orve-mail stands on, the files for CMake's
find_package and for pkg-config, the static libraries, and an example.
Whoever links statically needs the suggested packages as well.")
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS library windows)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "libgmime-3.0-dev, libidn2-dev, libcurl4-openssl-dev, libsqlite3-dev, unixodbc-dev, libldap-dev, libsodium-dev, qt6-base-dev, pkg-config, cmake, orve-mailserver")
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_SOURCE_DIR}/cmake/debian-files.cmake")
include(CPack)
