#pragma once

#include <locale>
#include <string>

namespace vexil::tests {

/// A language in the process that puts a "." after every digit of a number, for as long as this lives.
class GroupingLocale {
public:
    GroupingLocale() : before_(std::locale::global(std::locale(std::locale::classic(), new Points))) {}
    GroupingLocale(const GroupingLocale&) = delete;
    GroupingLocale& operator=(const GroupingLocale&) = delete;
    ~GroupingLocale() { std::locale::global(before_); }

private:
    class Points final : public std::numpunct<char> {
        [[nodiscard]] char do_thousands_sep() const override { return '.'; }
        [[nodiscard]] std::string do_grouping() const override { return "\1"; }
    };

    std::locale before_;
};

} // namespace vexil::tests
