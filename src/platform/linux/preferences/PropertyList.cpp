// SPDX-License-Identifier: MIT
#include "platform/linux/preferences/PropertyList.h"

#include "foundation/Text.h"

#include <plist/plist.h>

#include <algorithm>
#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <vector>

namespace stowpocket {
namespace {

constexpr std::string_view whitespace = " \t\r\n";
constexpr std::size_t maxPropertyListDepth = 64;
constexpr std::size_t maxPropertyListElements = 200'000;

/// Walks from tag to tag. It must never consider an element closed that the parser considers open, so anything that
/// could hide a tag from one of the two (attributes, declarations below the top level) ends the walk.
class Scan {
public:
    explicit Scan(std::string_view xml) : rest_(xml) {}

    bool isBounded() {
        while (skipToTag()) {
            if (!takeTag())
                return false;
        }
        return open_.empty() && elements_ > 0;
    }

private:
    bool skipToTag() {
        const std::size_t next = rest_.find('<');
        rest_.remove_prefix(next == std::string_view::npos ? rest_.size() : next);
        return !rest_.empty();
    }

    bool takeTag() {
        if (rest_.starts_with("<!--"))
            return skipPast("-->", 4);
        if (rest_.starts_with("<![CDATA["))
            return !open_.empty() && skipPast("]]>", 9);
        if (rest_.starts_with("<?"))
            return open_.empty() && skipPast("?>", 2);
        const std::size_t end = rest_.find('>');
        if (end == std::string_view::npos)
            return false;
        const std::string_view tag = rest_.substr(1, end - 1);
        rest_.remove_prefix(end + 1);
        if (tag.starts_with("!DOCTYPE"))
            return open_.empty() && tag.find('[') == std::string_view::npos;
        return takeElement(tag);
    }

    bool takeElement(std::string_view tag) {
        if (tag.starts_with('/'))
            return close(withoutTrailingSpace(tag.substr(1)));
        if (++elements_ > maxPropertyListElements)
            return false;
        const bool isEmpty = tag.ends_with('/');
        if (isEmpty)
            tag.remove_suffix(1);
        tag = withoutTrailingSpace(tag);
        if (tag == R"(plist version="1.0")")
            tag = "plist";
        if (tag.empty() || tag.find_first_of(" \t\r\n\"'/<=") != std::string_view::npos)
            return false;
        if (!isEmpty)
            open_.push_back(tag);
        return open_.size() <= maxPropertyListDepth;
    }

    bool close(std::string_view name) {
        if (open_.empty() || open_.back() != name)
            return false;
        open_.pop_back();
        return true;
    }

    bool skipPast(std::string_view end, std::size_t from) {
        const std::size_t found = rest_.find(end, from);
        if (found == std::string_view::npos)
            return false;
        rest_.remove_prefix(found + end.size());
        return true;
    }

    static std::string_view withoutTrailingSpace(std::string_view text) {
        return text.substr(0, text.find_last_not_of(whitespace) + 1);
    }

    std::string_view rest_;
    std::vector<std::string_view> open_;
    std::size_t elements_ = 0;
};

/// Whether `xml` is harmless to a recursive property-list parser: its elements are closed in order, and neither too
/// many nor nested too deeply. Looks at tags only; whether they form a property list is for the parser to decide.
bool isBoundedPropertyList(std::string_view xml) {
    return xml.find('\0') == std::string_view::npos && Scan(xml).isBounded();
}

/// libplist reads numbers with atof, which expects a decimal comma in half of Europe and drops the fraction.
class PlainNumbers {
public:
    PlainNumbers() : previous_(uselocale(plain())) {}
    PlainNumbers(const PlainNumbers&) = delete;
    PlainNumbers& operator=(const PlainNumbers&) = delete;
    ~PlainNumbers() { uselocale(previous_); }

private:
    static locale_t plain() {
        static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }
    locale_t previous_;
};

struct FreeNode {
    void operator()(void* node) const { plist_free(node); }
};
struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};
using Node = std::unique_ptr<void, FreeNode>;

/// libplist stores dates as 32-bit seconds since 2001.
constexpr std::chrono::sys_seconds plistEpoch = std::chrono::sys_days(std::chrono::year(2001) / 1 / 1);

std::optional<PropertyValue> valueOf(plist_t node);

std::optional<PropertyValue> integerOf(plist_t node) {
    std::uint64_t bits = 0;
    plist_get_uint_val(node, &bits);
    // Only the way in which the node is stored tells whether 2^63 and above was meant as a negative number.
    const Node asSigned(plist_new_uint(bits));
    if (plist_compare_node_value(node, asSigned.get()) == 0)
        return std::nullopt;
    return static_cast<std::int64_t>(bits);
}

std::string stringOf(plist_t node) {
    std::uint64_t length = 0;
    const char* const text = plist_get_string_ptr(node, &length);
    return text == nullptr ? std::string() : validUtf8({text, length});
}

Bytes dataOf(plist_t node) {
    std::uint64_t length = 0;
    const char* const data = plist_get_data_ptr(node, &length);
    return data == nullptr ? Bytes() : Bytes(data, data + length);
}

Date dateOf(plist_t node) {
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    return plistEpoch + std::chrono::seconds(seconds);
}

PropertyValue::Array arrayOf(plist_t node) {
    PropertyValue::Array values;
    plist_array_iter started = nullptr;
    plist_array_new_iter(node, &started);
    const std::unique_ptr<void, FreeMemory> iterator(started);
    for (;;) {
        plist_t child = nullptr;
        plist_array_next_item(node, iterator.get(), &child);
        if (child == nullptr)
            return values;
        if (std::optional<PropertyValue> value = valueOf(child))
            values.push_back(std::move(*value));
    }
}

PropertyValue::Dictionary dictionaryOf(plist_t node) {
    PropertyValue::Dictionary values;
    plist_dict_iter started = nullptr;
    plist_dict_new_iter(node, &started);
    const std::unique_ptr<void, FreeMemory> iterator(started);
    for (;;) {
        char* name = nullptr;
        plist_t child = nullptr;
        plist_dict_next_item(node, iterator.get(), &name, &child);
        const std::unique_ptr<char, FreeMemory> key(name);
        if (key == nullptr || child == nullptr)
            return values;
        if (std::optional<PropertyValue> value = valueOf(child))
            values.insert_or_assign(validUtf8(key.get()), std::move(*value));
    }
}

std::optional<PropertyValue> valueOf(plist_t node) {
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return PropertyValue(value != 0);
    }
    case PLIST_UINT:
        return integerOf(node);
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return PropertyValue(value);
    }
    case PLIST_STRING:
        return PropertyValue(stringOf(node));
    case PLIST_DATA:
        return PropertyValue(dataOf(node));
    case PLIST_DATE:
        return PropertyValue(dateOf(node));
    case PLIST_ARRAY:
        return PropertyValue(arrayOf(node));
    case PLIST_DICT:
        return PropertyValue(dictionaryOf(node));
    case PLIST_KEY:
    case PLIST_UID:
    case PLIST_NONE:
        break;
    }
    return std::nullopt;
}

/// libplist reads text up to the first NUL.
std::string plistText(std::string_view text) {
    std::string valid = validUtf8(text);
    for (std::size_t nul = valid.find('\0'); nul != std::string::npos; nul = valid.find('\0', nul))
        valid.replace(nul, 1, "\xEF\xBF\xBD");
    return valid;
}

plist_t newDate(Date date) {
    using Limits = std::numeric_limits<std::int32_t>;
    const std::int64_t seconds = (std::chrono::floor<std::chrono::seconds>(date) - plistEpoch).count();
    const std::int64_t kept = std::clamp<std::int64_t>(seconds, Limits::min(), Limits::max());
    return plist_new_date(static_cast<std::int32_t>(kept), 0);
}

plist_t newNode(const PropertyValue& value) {
    if (const PropertyValue::Dictionary* const dictionary = value.dictionary()) {
        plist_t node = plist_new_dict();
        for (const auto& [key, child] : *dictionary)
            plist_dict_set_item(node, plistText(key).c_str(), newNode(child));
        return node;
    }
    if (const PropertyValue::Array* const array = value.array()) {
        plist_t node = plist_new_array();
        for (const PropertyValue& child : *array)
            plist_array_append_item(node, newNode(child));
        return node;
    }
    if (const std::string* const text = value.string())
        return plist_new_string(plistText(*text).c_str());
    if (const Bytes* const data = value.data()) {
        const std::string copy(data->begin(), data->end());
        return plist_new_data(copy.data(), copy.size());
    }
    if (const std::optional<Date> date = value.date())
        return newDate(*date);
    if (const std::optional<double> real = value.real())
        return plist_new_real(*real);
    if (const std::optional<std::int64_t> integer = value.integer())
        return plist_new_uint(static_cast<std::uint64_t>(*integer));
    return plist_new_bool(value.boolean().value_or(false) ? 1 : 0);
}

}  // namespace

// The binary format is not read: nobody writes it here, and its objects may contain themselves, which cannot be
// detected before libplist follows them. libplist frees nested nodes recursively, so the XML format is measured
// first.
std::optional<PropertyValue> parsePropertyList(std::string_view bytes) {
    if (bytes.size() > maxPropertyListSize || !isBoundedPropertyList(bytes))
        return std::nullopt;
    const PlainNumbers plainNumbers;
    plist_t root = nullptr;
    plist_from_xml(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
    const Node owner(root);
    return root == nullptr ? std::nullopt : valueOf(root);
}

std::string writePropertyList(const PropertyValue& value) {
    const PlainNumbers plainNumbers;
    const Node root(newNode(value));
    char* written = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(root.get(), &written, &length);
    const std::unique_ptr<char, FreeMemory> text(written);
    return text == nullptr ? std::string() : std::string(text.get(), length);
}

}  // namespace stowpocket
