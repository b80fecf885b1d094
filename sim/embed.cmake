# Writes IN as a C++ string constant SYMBOL into OUT (see xpsim_embed_text).
file(READ ${IN} content HEX)
string(LENGTH "${content}" hexlen)
math(EXPR len "${hexlen} / 2")
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${content}")
file(WRITE ${OUT} "// Generated from ${IN}\n#include <cstddef>\nnamespace xpsim {\nextern const char ${SYMBOL}[];\nextern const std::size_t ${SYMBOL}_size;\nconst char ${SYMBOL}[] = {${bytes} 0};\nconst std::size_t ${SYMBOL}_size = ${len};\n}\n")
