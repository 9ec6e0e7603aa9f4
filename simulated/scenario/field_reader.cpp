#include "simulated/scenario/field_reader.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <ios>

namespace vexil::simulated {

using nlohmann::json;

namespace {

std::string join(const std::vector<std::string>& words) {
    std::string text;
    for (const auto& word : words) {
        text += (text.empty() ? "" : ", ") + word;
    }
    return text;
}

/// Parses a file in which no field stands twice in one object: of two the parser would keep the last, and
/// what the first one says would be lost without a word.
json parseWithoutRepetition(std::istream& stream, const std::string& file) {
    std::vector<std::set<std::string>> open; // the fields of the objects around the place, innermost last
    return json::parse(stream, [&](int, json::parse_event_t event, const json& value) {
        if (event == json::parse_event_t::object_start) {
            open.emplace_back();
        } else if (event == json::parse_event_t::object_end) {
            open.pop_back();
        } else if (event == json::parse_event_t::key &&
                   !open.back().insert(value.get<std::string>()).second) {
            throw ScenarioError(file + ": " + value.get<std::string>() + ": stands twice in one object");
        }
        return true;
    });
}

} // namespace

FieldReader::FieldReader(std::shared_ptr<const json> document, const json& object, std::string file,
                         std::string path)
    : document_(std::move(document)), object_(&object), file_(std::move(file)), path_(std::move(path)) {
    if (!object.is_object()) {
        throw ScenarioError(file_ + ": " + (path_.empty() ? "the file" : path_) + ": must be an object");
    }
}

void FieldReader::fail(const std::string& field, const std::string& reason) const {
    throw ScenarioError(file_ + ": " + (path_.empty() ? "" : path_ + ".") + field + ": " + reason);
}

const json* FieldReader::find(const std::string& field) {
    known_.insert(field);
    const auto found = object_->find(field);
    return found == object_->end() ? nullptr : &*found;
}

const json& FieldReader::require(const std::string& field) {
    const auto* value = find(field);
    if (value == nullptr) {
        fail(field, "is missing");
    }
    return *value;
}

bool FieldReader::has(const std::string& field) const { return object_->contains(field); }

std::string FieldReader::text(const std::string& field) {
    const auto& value = require(field);
    if (!value.is_string()) {
        fail(field, "must be a text, is " + value.dump());
    }
    return value.get<std::string>();
}

std::string FieldReader::text(const std::string& field, const std::string& fallback) {
    return find(field) == nullptr ? fallback : text(field);
}

bool FieldReader::flag(const std::string& field, bool fallback) {
    const auto* value = find(field);
    if (value == nullptr) {
        return fallback;
    }
    if (!value->is_boolean()) {
        fail(field, "must be true or false, is " + value->dump());
    }
    return value->get<bool>();
}

double FieldReader::real(const std::string& field, double least, double most) {
    const auto& value = require(field);
    if (!value.is_number() || value.get<double>() < least || value.get<double>() > most) {
        fail(field, "must be a number from " + std::to_string(least) + " to " + std::to_string(most) +
                        ", is " + value.dump());
    }
    return value.get<double>();
}

std::uint64_t FieldReader::toNumber(const json& value, const std::string& field, std::uint64_t least,
                                    std::uint64_t most) const {
    std::optional<std::uint64_t> number;
    if (value.is_number_unsigned()) {
        number = value.get<std::uint64_t>();
    } else if (value.is_string()) {
        const auto text = value.get<std::string>();
        std::uint64_t parsed = 0;
        const auto* end = text.data() + text.size();
        if (text.starts_with("0x") && std::from_chars(text.data() + 2, end, parsed, 16).ptr == end &&
            text.size() > 2 && text.size() <= 18) {
            number = parsed;
        }
    }
    if (!number || *number < least || *number > most) {
        fail(field, "must be a whole number from " + std::to_string(least) + " to " + std::to_string(most) +
                        " (or a text in the form \"0x1F\"), is " + value.dump());
    }
    return *number;
}

std::uint64_t FieldReader::number(const std::string& field, std::uint64_t least, std::uint64_t most) {
    return toNumber(require(field), field, least, most);
}

std::uint64_t FieldReader::number(const std::string& field, std::uint64_t least, std::uint64_t most,
                                  std::uint64_t fallback) {
    const auto* value = find(field);
    return value == nullptr ? fallback : toNumber(*value, field, least, most);
}

std::optional<std::int64_t> FieldReader::integer(const std::string& field, std::int64_t least,
                                                 std::int64_t most) {
    const auto* value = find(field);
    if (value == nullptr) {
        return std::nullopt;
    }
    if (value->is_number_integer() && !value->is_number_unsigned()) {
        const auto number = value->get<std::int64_t>();
        if (number < least || number > most) {
            fail(field, "must be a whole number from " + std::to_string(least) + " to " +
                            std::to_string(most) + ", is " + value->dump());
        }
        return number;
    }
    const auto lowest = static_cast<std::uint64_t>(std::max<std::int64_t>(least, 0));
    return static_cast<std::int64_t>(toNumber(*value, field, lowest, static_cast<std::uint64_t>(most)));
}

std::vector<std::uint64_t> FieldReader::numbers(const std::string& field, std::uint64_t least,
                                                std::uint64_t most) {
    const auto* value = find(field);
    std::vector<std::uint64_t> numbers;
    if (value == nullptr) {
        return numbers;
    }
    if (!value->is_array()) {
        fail(field, "must be a list of numbers, is " + value->dump());
    }
    for (const auto& element : *value) {
        numbers.push_back(toNumber(element, field, least, most));
    }
    return numbers;
}

std::vector<std::string> FieldReader::texts(const std::string& field) {
    const auto* value = find(field);
    if (value == nullptr) {
        return {};
    }
    std::vector<std::string> texts;
    for (const auto& element : value->is_array() ? *value : json::array({*value})) {
        if (!element.is_string()) {
            fail(field, "must be a list of texts, is " + value->dump());
        }
        texts.push_back(element.get<std::string>());
    }
    return texts;
}

std::size_t FieldReader::choice(const std::string& field, const std::vector<std::string>& words) {
    const auto word = text(field);
    const auto found = std::ranges::find(words, word);
    if (found == words.end()) {
        fail(field, "\"" + word + "\" is none of " + join(words));
    }
    return static_cast<std::size_t>(found - words.begin());
}

std::uint64_t FieldReader::namedNumber(const std::string& field,
                                       const std::map<std::string, std::uint64_t>& names, std::uint64_t most,
                                       std::optional<std::uint64_t> fallback) {
    const auto* value = find(field);
    if (value == nullptr && fallback) {
        return *fallback;
    }
    const auto& present = require(field);
    if (present.is_string()) {
        const auto found = names.find(present.get<std::string>());
        if (found != names.end()) {
            return found->second;
        }
    }
    return toNumber(present, field, 0, most);
}

std::optional<FieldReader> FieldReader::object(const std::string& field) {
    const auto* value = find(field);
    if (value == nullptr) {
        return std::nullopt;
    }
    return FieldReader(document_, *value, file_, path_.empty() ? field : path_ + "." + field);
}

std::vector<FieldReader> FieldReader::objects(const std::string& field) {
    std::vector<FieldReader> readers;
    const auto* value = find(field);
    if (value == nullptr) {
        return readers;
    }
    if (!value->is_array()) {
        fail(field, "must be a list, is " + value->dump());
    }
    const auto name = path_.empty() ? field : path_ + "." + field;
    for (std::size_t i = 0; i < value->size(); ++i) {
        readers.emplace_back(document_, (*value)[i], file_, name + "[" + std::to_string(i) + "]");
    }
    return readers;
}

void FieldReader::finish() const {
    for (const auto& [field, value] : object_->items()) {
        if (!known_.contains(field)) {
            fail(field,
                 "is not a field of a scenario here; known are " + join({known_.begin(), known_.end()}));
        }
    }
}

FieldReader readJsonFile(const std::string& file) {
    // A plain string would be read in the system's own encoding.
    std::ifstream stream(std::filesystem::path(std::u8string(file.begin(), file.end())), std::ios::binary);
    if (!stream) {
        throw ScenarioError(file + ": cannot be opened");
    }
    try {
        auto document = std::make_shared<const json>(parseWithoutRepetition(stream, file));
        const auto& object = *document;
        return {std::move(document), object, file, ""};
    } catch (const json::exception& error) {
        throw ScenarioError(file + ": is no JSON: " + error.what());
    } catch (const std::ios_base::failure&) {
        throw ScenarioError(file + ": cannot be read"); // A folder can be opened.
    }
}

std::uint32_t hexadecimal(const std::string& digits) {
    return static_cast<std::uint32_t>(std::stoul(digits, nullptr, 16));
}

} // namespace vexil::simulated
