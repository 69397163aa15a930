# Writes the module-definition file of VDX32.dll from the header: every
# function it declares, under its plain name.
#   cmake -DENTETE=vdx32.h -DSORTIE=VDX32.def -P def.cmake
file(STRINGS "${ENTETE}" lignes REGEX "VDX_CALL [A-Za-z0-9_]+\\(")
set(texte "LIBRARY VDX32\nEXPORTS\n")
foreach(ligne IN LISTS lignes)
  string(REGEX MATCH "VDX_CALL ([A-Za-z0-9_]+)\\(" trouve "${ligne}")
  string(APPEND texte "    ${CMAKE_MATCH_1}\n")
endforeach()
file(WRITE "${SORTIE}" "${texte}")
