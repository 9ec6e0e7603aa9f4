#include "fonts.h"

void registerFonts() {}
