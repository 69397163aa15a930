# Writes the module-definition file of VDX32.dll from the header: every
# function it declares. With DECORE (32-bit stdcall) each name carries the
# "@n" of its arguments (4 bytes each: they are all 32 bits wide), so that
# the import library matches what a C host calls; the DLL is linked with
# --kill-at and exports the plain names.
#   cmake -DENTETE=vdx32.h -DSORTIE=VDX32.def [-DDECORE=ON] -P def.cmake
file(READ "${ENTETE}" entete)
string(REGEX MATCHALL "VDX_CALL [A-Za-z0-9_]+\\([^)]*\\)" prototypes "${entete}")
set(texte "LIBRARY VDX32\nEXPORTS\n")
foreach(prototype IN LISTS prototypes)
  string(REGEX MATCH "VDX_CALL ([A-Za-z0-9_]+)\\(([^)]*)\\)" trouve "${prototype}")
  set(nom "${CMAKE_MATCH_1}")
  if(DECORE)
    string(STRIP "${CMAKE_MATCH_2}" arguments)
    if(arguments STREQUAL "void" OR arguments STREQUAL "")
      set(nombre 0)
    else()
      string(REGEX REPLACE "[^,]" "" virgules "${arguments}")
      string(LENGTH "${virgules}" nombre)
      math(EXPR nombre "${nombre} + 1")
    endif()
    math(EXPR octets "${nombre} * 4")
    set(nom "${nom}@${octets}")
  endif()
  string(APPEND texte "    ${nom}\n")
endforeach()
file(WRITE "${SORTIE}" "${texte}")
