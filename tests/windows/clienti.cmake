# Real clients of the DLL: scripts of the system's engines, and a program built against the type library's header.
add_subdirectory(script_host)

add_executable(test-client default_member_test.cpp early_bound_test.cpp event_test.cpp registrazione_test.cpp type_library_test.cpp
               win32/doppio.cpp)
target_include_directories(test-client PRIVATE "${CMAKE_SOURCE_DIR}/tests")
target_link_libraries(test-client PRIVATE orve-com-idl orve-win32 GTest::gmock_main)
target_compile_definitions(test-client PRIVATE "ORVE_DLL=L\"$<TARGET_FILE_NAME:orve-com>\"")
add_dependencies(test-client orve-com)
add_test(NAME test-client COMMAND test-client WORKING_DIRECTORY "$<TARGET_FILE_DIR:orve-com>")

# orve_add_script(NAME [FILE...] [ARGS...]): a script, with the shared one run before it
function(orve_add_script name script)
  add_test(NAME "script-${name}"
           COMMAND script_host --register "$<TARGET_FILE:orve-com>" "${CMAKE_CURRENT_SOURCE_DIR}/scripts/comuni.vbs"
                   "${script}" -- ${ARGN})
  set_tests_properties("script-${name}" PROPERTIES TIMEOUT 120)
endfunction()
set(ORVE_SCRIPTS "${CMAKE_CURRENT_SOURCE_DIR}/scripts")
set(ORVE_JOURNALS tests/windows/journals)
orve_add_script(collezioni "${ORVE_SCRIPTS}/collezioni.vbs")
orve_add_script(membri "${ORVE_SCRIPTS}/membri.vbs")
orve_add_script(valori_predefiniti "${ORVE_SCRIPTS}/valori_predefiniti.vbs")
orve_add_script(errori "${ORVE_SCRIPTS}/errori.vbs")
orve_add_script(evento "${ORVE_SCRIPTS}/evento.vbs" "${ORVE_JOURNALS}/smtp_per_codice.txt")
orve_add_script(canali "${ORVE_SCRIPTS}/canali.vbs" "${ORVE_JOURNALS}/canali.txt")

# The DLL needs nothing but what every Windows has.
add_test(NAME dll-imports COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/dll_imports" "${CMAKE_OBJDUMP}"
                                  "$<TARGET_FILE:orve-com>")
add_test(NAME dll-bill-of-materials
         COMMAND "${CMAKE_SOURCE_DIR}/tests/package/bill_of_materials" "${CMAKE_BINARY_DIR}" com/orve_mailserver.dll
                 g++-mingw-w64-x86-64-posix mingw-w64-x86-64-dev)
add_test(NAME dll-hardening COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/dll_hardening" "${CMAKE_OBJDUMP}"
                                    "$<TARGET_FILE:orve-com>")

# The samples, unchanged, with everything behind them played by a script that is run first.
set(ORVE_EXAMPLES "${CMAKE_SOURCE_DIR}/examples")
# orve_add_sample(NAME SCRIPTS OUTPUT ARGS...): the sample that the last script is ends with this output and status
function(orve_add_sample name scripts output)
  add_test(NAME "sample-${name}"
           COMMAND script_host --tell-status --register "$<TARGET_FILE:orve-com>" ${scripts} -- "Provider=prova" 1 ${ARGN})
  set_tests_properties("sample-${name}" PROPERTIES TIMEOUT 120 PASS_REGULAR_EXPRESSION "${output}[\r\n]+$")
endfunction()
set(ORVE_VBSCRIPT "${ORVE_SCRIPTS}/comuni.vbs;${ORVE_SCRIPTS}/recitati.vbs;${ORVE_EXAMPLES}/vbscript/invia_fattura.vbs")
orve_add_sample(vbscript "${ORVE_VBSCRIPT}"
                "consegna[\r\n]+Inviato: Società Più S.r.l.<anna@x.example>[\r\n]+esito 0" 501 "C:\\fattura.pdf")
orve_add_sample(vbscript-refused "${ORVE_VBSCRIPT}"
                "consegna[\r\n]+Società Più S.r.l.: Server si rifiuta di inoltrare mail .*[\r\n]+esito 1" 503 "C:\\fattura.pdf")
orve_add_sample(vbscript-without-address "${ORVE_VBSCRIPT}"
                "^Invio a [^\r\n]+[\r\n]+Società Più S.r.l.: Non inviato. Indirizzo mancante.[\r\n]+esito 1" 502 "C:\\fattura.pdf")
orve_add_sample(vbscript-unknown-customer "${ORVE_VBSCRIPT}"
                "^Invio a [^\r\n]+[\r\n]+Cliente 999 sconosciuto: Non inviato. Indirizzo mancante.[\r\n]+esito 1" 999 "C:\\fattura.pdf")
set(ORVE_JSCRIPT "${ORVE_SCRIPTS}/recitati.js;${ORVE_EXAMPLES}/jscript/invia_messaggio.js")
orve_add_sample(
  jscript "${ORVE_JSCRIPT}"
  "consegna[\r\n]+Inviato: Cliente 1<anna@x.example>[\r\n]+Inviato: Cliente 2<bruno@x.example>[\r\n]+esito 0"
  anna@x.example bruno@x.example)
orve_add_sample(jscript-refused "${ORVE_JSCRIPT}"
                "consegna[\r\n]+Cliente 1<rifiutata@x.example>: Server si rifiuta di inoltrare mail .*[\r\n]+esito 1"
                rifiutata@x.example)
add_subdirectory(dll)
