# Run by cpack between installing and packing: what a Debian package has in addition to what is installed elsewhere too. The
# manual is packed, and is found whatever the language; the program speaks Italian, and so does the one manual.
string(TIMESTAMP now "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(changelog "orve-mailserver (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium

  * What changed stands in CHANGELOG.md.

 -- ${CPACK_PACKAGE_CONTACT}  ${now}
")

file(GLOB folders "${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/doc/*orve-mailserver*")
foreach(folder IN LISTS folders)
  file(WRITE "${folder}/changelog" "${changelog}")
  execute_process(COMMAND gzip -9n "${folder}/changelog" COMMAND_ERROR_IS_FATAL ANY)
endforeach()

# Made by `./dev package` from the finished build. What is built with the libraries is nothing new.
foreach(folder IN LISTS folders)
  if(NOT folder MATCHES "-dev$")
    file(COPY "${CPACK_PACKAGE_DIRECTORY}/orve-mailserver.spdx.json" DESTINATION "${folder}")
  endif()
endforeach()

set(manuals "${CPACK_TEMPORARY_DIRECTORY}/program/usr/share/man")
execute_process(COMMAND gzip -9n "${manuals}/it/man1/orve-mail.1" COMMAND_ERROR_IS_FATAL ANY)
file(MAKE_DIRECTORY "${manuals}/man1")
file(CREATE_LINK ../it/man1/orve-mail.1.gz "${manuals}/man1/orve-mail.1.gz" SYMBOLIC)
