#pragma once

/// Lets Qt know the look's typeface, which the library carries, once a program has a GUI. Without one, or
/// without Qt, nothing happens.
void registerFonts();
