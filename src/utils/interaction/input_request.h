#pragma once

#include "utils/interaction/abstract_widget_wrapper.h"
#include "utils/interaction/test_context.h"

#include <cstdint>
#include <string>
#include <vector>

/// A question of a test to the user, and the place of the answer. Nothing that it points to is owned by it.
struct InputRequest {
    virtual ~InputRequest() = default;

    AbstractWidgetWrapper* widget = nullptr; ///< null for a plain question
    std::uint32_t result = 0; ///< 0 closed, 1 OK, 2 Cancel, 3 Yes, 4 No; or what `widget` answered
    std::string title;        ///< a message key
    std::string text;         ///< a message key
    std::uint32_t kind = 0;   ///< the icon: 0 and 5 question, 1 and 2 information, 3 warning, 4 error
    std::uint32_t type = 0;   ///< the buttons: 0 OK; 1 OK, Cancel; 2 Yes, No; 3: `widget` draws everything
    std::vector<void*> fields;
    std::uint32_t flags = 0;
    TestContext* context = nullptr;
};
