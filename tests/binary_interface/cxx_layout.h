#pragma once

#include <stddef.h>
#include <stdint.h>

/* How g++ lays out what crosses the module's edge: the Itanium C++ interface, on both homes. An object begins
   with the pointer to its slots; a virtual destructor takes two of them. An object with a destructor is
   returned through a hidden first argument, and passed by its address. */

typedef void (*slot_function)(void);

struct object {
    const slot_function* slots;
};

enum { slot_destroy = 0, slot_delete = 1, first_slot = 2 };

struct cxx_string {
    const char* text;
    size_t length;
    char inside[16];
};

struct cxx_vector {
    char* begin;
    char* end;
    char* capacity;
};

/* Without a count behind it a pointer is shared with nobody, and released by nobody. */
struct cxx_shared {
    void* object;
    void* count;
};

struct module_version {
    uint8_t major;
    uint16_t minor;
    uint16_t patch;
    struct cxx_string label;
};

struct module_object {
    struct object object;
    struct cxx_vector test_ids; /* of int32_t */
    struct cxx_shared scanner;
    struct cxx_shared dispatcher;
};

struct parameter_description {
    struct cxx_string key, name, description, default_value;
    int32_t type;
    uint32_t flags;
    struct cxx_string range;
};

struct parameter_object {
    struct object object;
    struct parameter_description description;
    struct cxx_string value;
};

struct parameter_entry {
    struct cxx_string key;
    struct parameter_object* parameter;
};

struct test_descriptor {
    int32_t id;
    struct cxx_string name, tooltip;
    struct cxx_vector parameters;
    struct cxx_string group;
    int32_t group_rank;
    struct cxx_string reserved_text1, reserved_text2;
    int32_t reserved_number;
};

struct test_object {
    struct object object;
    struct test_descriptor descriptor;
    struct cxx_vector parameters; /* of struct parameter_entry */
};

struct test_message {
    uint8_t kind;
    struct cxx_string key;
};

struct run_arguments {
    struct cxx_shared device; /* a weak one, with the same shape */
    const volatile uint8_t* cancel_requested;
    struct object* reporter;
    struct cxx_shared system_events;
};
