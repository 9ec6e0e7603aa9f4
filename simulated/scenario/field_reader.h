#pragma once

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vexil::simulated {

/// What is wrong with a scenario: the text names the file, the field and the reason.
class ScenarioError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads the fields of one JSON object, knows where it stands in the file, and refuses what it does not know.
/// Every reading function throws `ScenarioError`; those without a fallback also for a missing field.
class FieldReader {
public:
    /// `path` is how a message names the object ("cards[0]"), empty for the whole file.
    FieldReader(std::shared_ptr<const nlohmann::json> document, const nlohmann::json& object,
                std::string file, std::string path);

    [[nodiscard]] bool has(const std::string& field) const;

    [[nodiscard]] std::string text(const std::string& field);
    [[nodiscard]] std::string text(const std::string& field, const std::string& fallback);
    [[nodiscard]] bool flag(const std::string& field, bool fallback);
    [[nodiscard]] double real(const std::string& field, double least, double most);
    /// Numbers may be written in decimal, or as a text "0x..." in hexadecimal.
    [[nodiscard]] std::uint64_t number(const std::string& field, std::uint64_t least, std::uint64_t most);
    [[nodiscard]] std::uint64_t number(const std::string& field, std::uint64_t least, std::uint64_t most,
                                       std::uint64_t fallback);
    /// A whole number that may be negative, written likewise, or nothing if the field is absent.
    [[nodiscard]] std::optional<std::int64_t> integer(const std::string& field, std::int64_t least,
                                                      std::int64_t most);
    /// A list of numbers, written likewise; none if the field is absent.
    [[nodiscard]] std::vector<std::uint64_t> numbers(const std::string& field, std::uint64_t least,
                                                     std::uint64_t most);
    /// A list of texts; none if the field is absent.
    [[nodiscard]] std::vector<std::string> texts(const std::string& field);
    /// One of a fixed list of words, answered as its place in the list.
    [[nodiscard]] std::size_t choice(const std::string& field, const std::vector<std::string>& words);
    /// A named number of the map, or any number.
    [[nodiscard]] std::uint64_t namedNumber(const std::string& field,
                                            const std::map<std::string, std::uint64_t>& names,
                                            std::uint64_t most,
                                            std::optional<std::uint64_t> fallback = std::nullopt);

    /// A nested object; nothing if the field is absent.
    [[nodiscard]] std::optional<FieldReader> object(const std::string& field);
    /// The objects of a list; none if the field is absent.
    [[nodiscard]] std::vector<FieldReader> objects(const std::string& field);

    /// To be called when everything has been read: a field that nobody asked for is an error.
    void finish() const;

    /// For rules of the caller's own.
    [[noreturn]] void fail(const std::string& field, const std::string& reason) const;

private:
    const nlohmann::json* find(const std::string& field);
    const nlohmann::json& require(const std::string& field);
    std::uint64_t toNumber(const nlohmann::json& value, const std::string& field, std::uint64_t least,
                           std::uint64_t most) const;

    std::shared_ptr<const nlohmann::json> document_;
    const nlohmann::json* object_;
    std::string file_;
    std::string path_;
    std::set<std::string> known_;
};

/// Reads a file, named in UTF-8, and hands out its outermost object. Throws `ScenarioError` for a file that
/// cannot be read or is no JSON.
[[nodiscard]] FieldReader readJsonFile(const std::string& file);

/// Of digits that were checked before, such as those of a card's ids and of its location.
[[nodiscard]] std::uint32_t hexadecimal(const std::string& digits);

} // namespace vexil::simulated
