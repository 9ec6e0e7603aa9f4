// What another library imports from the folder that both stand in.
extern "C" __declspec(dllexport) int beside() { return 1; }
