#include "platform/wide_text.h"

#include <iconv.h>

#include <cerrno>

namespace vexil::platform {

namespace {

/// Converts what iconv can and puts `replacement` for each input unit that it cannot.
template <typename Out, typename In>
std::basic_string<Out> convert(const char* to, const char* from, std::basic_string_view<In> text,
                               std::basic_string_view<Out> replacement) {
    std::basic_string<Out> result;
    const iconv_t converter = iconv_open(to, from);
    if (converter == reinterpret_cast<iconv_t>(-1)) {
        return result;
    }
    auto* in = reinterpret_cast<char*>(const_cast<In*>(text.data()));
    std::size_t inLeft = text.size() * sizeof(In);
    while (inLeft > 0) {
        Out buffer[256];
        auto* out = reinterpret_cast<char*>(buffer);
        std::size_t outLeft = sizeof(buffer);
        const bool failed = iconv(converter, &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1);
        result.append(buffer, (sizeof(buffer) - outLeft) / sizeof(Out));
        if (failed && errno != E2BIG) {
            result += replacement;
            in += sizeof(In);
            inLeft -= sizeof(In);
        }
    }
    iconv_close(converter);
    return result;
}

} // namespace

std::wstring toWide(std::string_view utf8) {
    return convert<wchar_t>("WCHAR_T", "UTF-8", utf8, std::wstring_view(L"\uFFFD"));
}

std::string toUtf8(std::wstring_view wide) {
    return convert<char>("UTF-8", "WCHAR_T", wide, std::string_view("\xEF\xBF\xBD"));
}

std::string toProcessText(std::string_view utf8) { return std::string(utf8); }
std::string fromProcessText(std::string_view text) { return std::string(text); }

} // namespace vexil::platform
