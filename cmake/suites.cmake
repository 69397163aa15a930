# Writes the CTest file that runs each suite of a GoogleTest program in one
# process: its fixture's base is built once for all its tests, and suites
# still run side by side. Run after each build of the program:
#   cmake -DPROGRAMME=... -DSORTIE=... -DDELAI=... [-DEMULATEUR=...] -P suites.cmake
# EMULATEUR runs a program of another system (wine for a Windows build).
execute_process(COMMAND ${EMULATEUR} "${PROGRAMME}" --gtest_list_tests OUTPUT_VARIABLE liste RESULT_VARIABLE code)
if(NOT code EQUAL 0)
  message(FATAL_ERROR "${PROGRAMME} --gtest_list_tests failed: ${code}")
endif()
string(REPLACE "\n" ";" lignes "${liste}")
set(texte "")
foreach(ligne IN LISTS lignes)
  # A suite is a line that does not begin with a blank; its tests follow.
  if(ligne MATCHES "^([A-Za-z0-9_/]+)\\.")
    set(suite "${CMAKE_MATCH_1}")
    string(APPEND texte "add_test([=[${suite}]=] ${EMULATEUR} [==[${PROGRAMME}]==] --gtest_brief=1 [=[--gtest_filter=${suite}.*]=])\n")
    string(APPEND texte "set_tests_properties([=[${suite}]=] PROPERTIES TIMEOUT ${DELAI})\n")
  endif()
endforeach()
file(WRITE "${SORTIE}" "${texte}")
