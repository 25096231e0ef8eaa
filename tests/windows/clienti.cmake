# Real clients of the DLL: scripts of the system's engines, and a program built against the type library's header.
add_subdirectory(script_host)

add_executable(test-client default_member_test.cpp early_bound_test.cpp event_test.cpp registrazione_test.cpp type_library_test.cpp
               win32/doppio.cpp)
target_include_directories(test-client PRIVATE "${CMAKE_SOURCE_DIR}/tests")
target_link_libraries(test-client PRIVATE orve-com-idl orve-win32 GTest::gmock_main)
target_compile_definitions(test-client PRIVATE "ORVE_DLL=L\"$<TARGET_FILE_NAME:orve-com>\"")
add_dependencies(test-client orve-com)
add_test(NAME test-client COMMAND test-client WORKING_DIRECTORY "$<TARGET_FILE_DIR:orve-com>")

# orve_add_script(NAME [FILE...] [ARGS...]): a script in front of which the shared one runs
function(orve_add_script name script)
  add_test(NAME "script-${name}"
           COMMAND script_host --register "$<TARGET_FILE:orve-com>" "${CMAKE_CURRENT_SOURCE_DIR}/scripts/comuni.vbs"
                   "${script}" -- ${ARGN})
  set_tests_properties("script-${name}" PROPERTIES TIMEOUT 120)
endfunction()
set(ORVE_SCRIPTS "${CMAKE_CURRENT_SOURCE_DIR}/scripts")
set(ORVE_JOURNALS "${CMAKE_CURRENT_SOURCE_DIR}/journals")
orve_add_script(collezioni "${ORVE_SCRIPTS}/collezioni.vbs")
orve_add_script(membri "${ORVE_SCRIPTS}/membri.vbs")
orve_add_script(valori_predefiniti "${ORVE_SCRIPTS}/valori_predefiniti.vbs")
orve_add_script(errori "${ORVE_SCRIPTS}/errori.vbs")
orve_add_script(evento "${ORVE_SCRIPTS}/evento.vbs" "${ORVE_JOURNALS}/smtp_per_codice.txt")
orve_add_script(canali "${ORVE_SCRIPTS}/canali.vbs" "${ORVE_JOURNALS}/canali.txt")

# The DLL needs nothing but what every Windows has.
add_test(NAME dll-imports COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/dll_imports" "${CMAKE_OBJDUMP}"
                                  "$<TARGET_FILE:orve-com>")

# The samples, unchanged, with what stands behind them played by a script in front.
set(ORVE_EXAMPLES "${CMAKE_SOURCE_DIR}/examples")
add_test(NAME sample-vbscript
         COMMAND script_host --register "$<TARGET_FILE:orve-com>" "${ORVE_SCRIPTS}/comuni.vbs" "${ORVE_SCRIPTS}/recitati.vbs"
                 "${ORVE_EXAMPLES}/vbscript/invia_fattura.vbs" -- "Provider=prova" 1 501 "C:\\fattura.pdf")
add_test(NAME sample-jscript
         COMMAND script_host --register "$<TARGET_FILE:orve-com>" "${ORVE_SCRIPTS}/recitati.js"
                 "${ORVE_EXAMPLES}/jscript/invia_messaggio.js" -- "Provider=prova" 1 anna@x.example bruno@x.example)
set_tests_properties(sample-vbscript sample-jscript PROPERTIES TIMEOUT 120 PASS_REGULAR_EXPRESSION
                                                               "consegnato[\r\n]+Stato: 0")
add_subdirectory(dll)
