# Writes a C++ source that holds files as character arrays, for a program
# that serves them:
#   cmake -DSORTIE=x.cpp "-DFICHIERS=NAME=path;NAME=path" -P embarque.cmake
# Each file becomes `extern const char vdx::NAME[]`, its bytes unchanged.
set(texte "// Written by cmake/embarque.cmake from the files it names.\nnamespace vdx {\n")
foreach(paire ${FICHIERS})
  string(REPLACE "=" ";" parties "${paire}")
  list(GET parties 0 nom)
  list(GET parties 1 chemin)
  file(READ "${chemin}" contenu HEX)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," octets "${contenu}")
  string(APPEND texte "extern const char ${nom}[];\nconst char ${nom}[] = {${octets} 0};\n")
endforeach()
string(APPEND texte "}  // namespace vdx\n")
file(WRITE "${SORTIE}.tmp" "${texte}")
file(COPY_FILE "${SORTIE}.tmp" "${SORTIE}" ONLY_IF_DIFFERENT)
file(REMOVE "${SORTIE}.tmp")
