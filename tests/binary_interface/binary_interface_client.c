#define _POSIX_C_SOURCE 200809L /* nanosleep */

#include "cxx_layout.h"

#include <stdatomic.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

#ifdef _WIN32
#include <windows.h>
static void* open_library(const char* file) { return (void*)LoadLibraryA(file); }
static slot_function find(void* library, const char* name) {
    return (slot_function)(void*)GetProcAddress((HMODULE)library, name);
}
#else
#include <dlfcn.h>
static void* open_library(const char* file) {
    void* library = dlopen(file, RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        fprintf(stderr, "%s\n", dlerror());
    }
    return library;
}
static slot_function find(void* library, const char* name) {
    slot_function function;
    *(void**)&function = dlsym(library, name);
    return function;
}
#endif

static int failures = 0;

static void expect(bool holds, const char* what) {
    if (!holds) {
        ++failures;
        fprintf(stderr, "not so: %s\n", what);
    }
}

static bool equal(const struct cxx_string* text, const char* expected) {
    return text->length == strlen(expected) && memcmp(text->text, expected, text->length) == 0;
}

static slot_function slot(const void* object, int number) {
    return ((const struct object*)object)->slots[number];
}

/* The slots of the module's interfaces, after the two of the destructor. */
enum {
    module_create_test = first_slot,
    module_id,
    module_short_name,
    module_name_key,
    module_version,
    module_device_scanner,
    module_dispatcher,
    module_shutdown,
    module_test_ids,
    module_tool_ids,
    module_description
};
enum { test_execute = first_slot, test_requires_exclusive_run, test_expected_duration, test_is_supported };
enum { parameter_get_description = first_slot, parameter_is_valid, parameter_set_value };
enum { scanner_scan = first_slot, scanner_check_presence, scanner_find_device, scanner_devices };
enum { dispatcher_can_start = first_slot, dispatcher_execute, dispatcher_finished, dispatcher_started };

typedef void (*returns_object)(void* result, void* self);
typedef int32_t (*returns_number)(void* self);
typedef void (*create_test_function)(void* result, void* self, int32_t id);

static void never_called(void) { expect(false, "the module calls only the operations that it may call"); }

/* ---- what the host provides: a reporter, a listener, a task
 * --------------------------------------------------- */

static int progress_calls = 0, report_calls = 0;
static void reporter_progress(void* self, uint8_t percent) {
    (void)self;
    expect(percent == 100, "a test that ends before it began is at 100 percent");
    ++progress_calls;
}
static void reporter_report(void* self, const struct test_message* message) {
    (void)self;
    expect(message->kind == 0 && equal(&message->key, "A_VIDEO_CARD_COULD_NOT_EXECUTE_OPERATION"),
           "a message has its kind before its key");
    ++report_calls;
}
static const slot_function reporter_slots[] = {never_called, never_called, (slot_function)reporter_progress,
                                               (slot_function)reporter_report, never_called};

static int presence_calls = 0;
static void listener_presence(void* self, bool present) {
    (void)self;
    (void)present;
    ++presence_calls;
}
static const slot_function listener_slots[] = {never_called, never_called, never_called, never_called,
                                               (slot_function)listener_presence};

static atomic_int task_runs = 0, task_deletions = 0;
static void task_run(void* self) {
    (void)self;
    atomic_fetch_add(&task_runs, 1);
}
static void task_delete(void* self) {
    (void)self;
    atomic_fetch_add(&task_deletions, 1);
}
static const slot_function task_slots[] = {never_called, (slot_function)task_delete, (slot_function)task_run};

/* ---- checks
 * ----------------------------------------------------------------------------------------------------- */

static const int32_t catalogue[] = {1, 3, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 4, 90, 5, 21};
enum { test_count = sizeof catalogue / sizeof catalogue[0] };

static bool are_the_catalogue(const struct cxx_vector* ids) {
    return ids->end - ids->begin == (ptrdiff_t)sizeof catalogue &&
           memcmp(ids->begin, catalogue, sizeof catalogue) == 0;
}

static void check_module(struct module_object* module) {
    struct cxx_string text;
    struct cxx_vector numbers;
    struct cxx_shared shared;
    struct module_version version;

    expect(((returns_number)slot(module, module_id))(module) == 7, "the module's id is 7");
    ((returns_object)slot(module, module_short_name))(&text, module);
    expect(equal(&text, "VC"), "the short name is VC");
    ((returns_object)slot(module, module_name_key))(&text, module);
    expect(equal(&text, "VIDEO_CARD"), "the name key is VIDEO_CARD");
    ((returns_object)slot(module, module_version))(&version, module);
    expect(version.major == 5 && version.minor == 2 && version.patch == 0 && version.label.length == 0,
           "the version is 5.2.0 without a label");
    ((returns_object)slot(module, module_description))(&text, module);
    expect(text.length == 0, "the description is empty");
    ((returns_object)slot(module, module_tool_ids))(&numbers, module);
    expect(numbers.begin == numbers.end, "there are no tool ids");

    expect(are_the_catalogue(&module->test_ids), "the ids are the module's first field");
    ((returns_object)slot(module, module_test_ids))(&numbers, module);
    expect(are_the_catalogue(&numbers), "the ids are given in the order of the catalogue");
    ((returns_object)slot(module, module_device_scanner))(&shared, module);
    expect(shared.object == module->scanner.object, "the scanner is the module's second field");
    ((returns_object)slot(module, module_dispatcher))(&shared, module);
    expect(shared.object == module->dispatcher.object, "the dispatcher is the module's third field");
    ((void (*)(void*))slot(module, module_shutdown))(module);
}

static void check_test(struct module_object* module, int32_t id) {
    struct test_object* test = NULL;
    ((create_test_function)slot(module, module_create_test))(&test, module, id);
    expect(test != NULL, "each id of the catalogue makes a test");
    if (!test) {
        fprintf(stderr, "  id %d\n", id);
        return;
    }
    expect(test->descriptor.id == id, "the id is the descriptor's first field");
    expect(test->descriptor.name.length > 0 && test->descriptor.tooltip.length > 0,
           "name and tool tip follow");
    expect(test->descriptor.parameters.begin == test->descriptor.parameters.end,
           "the descriptor's own parameters are empty");
    const bool rank_belongs_to_group =
        (equal(&test->descriptor.group, "QUICK_TESTS") && test->descriptor.group_rank == 1) ||
        (equal(&test->descriptor.group, "EXTENDED_TESTS") && test->descriptor.group_rank == 2) ||
        (equal(&test->descriptor.group, "Tool") && test->descriptor.group_rank == 0);
    expect(rank_belongs_to_group, "group and rank follow");
    expect(test->descriptor.reserved_text1.length == 0 && test->descriptor.reserved_text2.length == 0 &&
               test->descriptor.reserved_number == 0,
           "the last three fields are empty");

    expect(!((bool (*)(void*))slot(test, test_requires_exclusive_run))(test), "no test runs exclusively");
    const uint32_t minutes = ((uint32_t(*)(void*))slot(test, test_expected_duration))(test);
    expect(minutes == (id == 5 || id == 21 ? 5U : 1U), "a test lasts a minute, a stress test its duration");
    struct cxx_shared nobody = {NULL, NULL};
    const bool supported =
        ((bool (*)(void*, void*, struct cxx_shared*))slot(test, test_is_supported))(test, NULL, &nobody);
    expect(supported == (id == 1 || id == 4), "only the video memory tests are offered for no card at all");

    const uint8_t cancel = 0;
    struct object reporter = {reporter_slots};
    const struct run_arguments arguments = {{NULL, NULL}, &cancel, &reporter, {NULL, NULL}};
    typedef uint8_t (*execute_function)(void*, const struct run_arguments*);
    expect(((execute_function)slot(test, test_execute))(test, &arguments) == 0,
           "a device that is gone gives the result 0");
    ((void (*)(void*))slot(test, slot_delete))(test);
}

static void check_parameters(struct module_object* module) {
    static const char* const keys[] = {"DURATION", "BURN_IN", "INFINITE", "LOAD", "WINDOW_SIZE"};
    struct test_object* test = NULL;
    ((create_test_function)slot(module, module_create_test))(&test, module, 5);
    if (!test) {
        return;
    }
    const struct parameter_entry* entries = (const struct parameter_entry*)(void*)test->parameters.begin;
    expect(test->parameters.end - test->parameters.begin == (ptrdiff_t)(5 * sizeof *entries),
           "the visible stress test has five parameters");
    for (int i = 0; i < 5; ++i) {
        expect(equal(&entries[i].key, keys[i]) && equal(&entries[i].parameter->description.key, keys[i]),
               "the parameters stand in their order");
    }
    struct parameter_object* duration = entries[0].parameter;
    struct parameter_description copy;
    ((returns_object)slot(duration, parameter_get_description))(&copy, duration);
    expect(equal(&copy.range, "[1:9999]") && copy.type == 2 && copy.flags == 0 &&
               equal(&copy.default_value, "5"),
           "a description is returned with its fields in their order");
    struct cxx_string value = {value.inside, 2, "12"};
    typedef bool (*is_valid_function)(void*, struct cxx_string*);
    expect(((is_valid_function)slot(duration, parameter_is_valid))(duration, &value), "12 minutes are valid");
    ((void (*)(void*, struct cxx_string*))slot(duration, parameter_set_value))(duration, &value);
    expect(equal(&duration->value, "12"), "the value stands behind the description");
    ((void (*)(void*))slot(test, slot_delete))(test);
}

static void check_scanner(struct module_object* module) {
    void* scanner = module->scanner.object;
    struct object listener = {listener_slots};
    struct cxx_shared held = {&listener, NULL};
    ((void (*)(void*, struct cxx_shared*))slot(scanner, scanner_check_presence))(scanner, &held);
    expect(presence_calls == 1, "the listener's third operation is told of the presence, once");
    struct cxx_vector devices;
    ((returns_object)slot(scanner, scanner_devices))(&devices, scanner);
    expect(devices.begin == devices.end, "before a scan there are no devices");
    struct cxx_shared device;
    struct cxx_string id = {id.inside, 4, "0100"};
    ((void (*)(void*, void*, struct cxx_string*))slot(scanner, scanner_find_device))(&device, scanner, &id);
    expect(device.object == NULL, "an unknown id finds nothing");
}

static void check_dispatcher(struct module_object* module) {
    void* dispatcher = module->dispatcher.object;
    struct object task = {task_slots};
    struct object* owned = &task;
    const struct timespec millisecond = {0, 1000000};
    ((void (*)(void*, struct object**))slot(dispatcher, dispatcher_execute))(dispatcher, &owned);
    for (int waited = 0; waited < 10000 && atomic_load(&task_deletions) == 0; ++waited) {
        nanosleep(&millisecond, NULL);
    }
    expect(atomic_load(&task_runs) == 1, "the dispatcher runs a task by its one operation");
    expect(atomic_load(&task_deletions) == 1, "the dispatcher deletes the task that it owns");
}

int main(int count, char** arguments) {
    if (count != 2) {
        fprintf(stderr, "usage: %s MODULE\n", arguments[0]);
        return 2;
    }
    void* library = open_library(arguments[1]);
    if (!library) {
        fprintf(stderr, "%s cannot be loaded\n", arguments[1]);
        return 2;
    }
    struct module_object* (*create)(void) =
        (struct module_object * (*)(void)) find(library, "CreateModuleInstance");
    void (*destroy)(struct module_object*) =
        (void (*)(struct module_object*))find(library, "DestroyModuleInstance");
    if (!create || !destroy) {
        fprintf(stderr, "%s lacks its two exports\n", arguments[1]);
        return 2;
    }
    struct module_object* module = create();
    check_module(module);
    for (int i = 0; i < test_count; ++i) {
        check_test(module, catalogue[i]);
    }
    expect(progress_calls == 2 && report_calls == 2,
           "only the two video memory tests say that the device is gone");
    check_parameters(module);
    check_scanner(module);
    check_dispatcher(module);
    /* Here and there it still owns what the calls above returned; the process ends with it. */
    destroy(module);
    destroy(NULL);
    printf("%s\n",
           failures == 0 ? "every slot and every offset is where it must be" : "the interface has moved");
    return failures == 0 ? 0 : 1;
}
