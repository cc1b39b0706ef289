// SPDX-License-Identifier: MIT
#include "platform/linux/preferences/PropertyListScan.h"

#include <vector>

namespace stowpocket {
namespace {

constexpr std::string_view whitespace = " \t\r\n";

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

}  // namespace

bool isBoundedPropertyList(std::string_view xml) {
    return xml.find('\0') == std::string_view::npos && Scan(xml).isBounded();
}

}  // namespace stowpocket
