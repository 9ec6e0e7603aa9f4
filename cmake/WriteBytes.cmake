# Writes the bytes of FILE into the C++ source OUTPUT, as the span NAME of NAMESPACE; see EmbedBinary.cmake.
file(READ ${FILE} digits HEX)
string(REGEX REPLACE "(................................)" "\\1\n    " digits "${digits}")
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1, " numbers "${digits}")
file(WRITE ${OUTPUT} "#include <cstddef>
#include <span>

namespace ${NAMESPACE} {

extern const std::span<const std::byte> ${NAME};

alignas(16) constexpr unsigned char ${NAME}Bytes[] = {
    ${numbers}
};

const std::span<const std::byte> ${NAME} = std::as_bytes(std::span(${NAME}Bytes));

} // namespace ${NAMESPACE}
")
