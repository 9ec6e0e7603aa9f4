extern "C" __declspec(dllimport) int beside();

extern "C" __declspec(dllexport) int importedAnswer() { return 42 + beside(); }
