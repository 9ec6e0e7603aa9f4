# cmake -DTEXT=FILE -DOUTPUT=FILE -P EmbedText.cmake: writes a text as a C++ string literal.
file(READ ${TEXT} text)
file(WRITE ${OUTPUT} "R\"text(${text})text\"\n")
