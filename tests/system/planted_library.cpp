// What a library search must not pick up: a library that only lies in the working directory.
extern "C" __attribute__((visibility("default"))) int plantedAnswer() { return 42; }
