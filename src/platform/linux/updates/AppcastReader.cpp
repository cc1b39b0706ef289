// SPDX-License-Identifier: MIT
#include "platform/linux/updates/AppcastReader.h"

#include "foundation/Text.h"
#include "platform/linux/updates/UpdateHelperProtocol.h"

#include <QUrl>
#include <QXmlStreamReader>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <utility>

namespace stowpocket {
namespace {

constexpr std::size_t maxNotesSize = 20'000;
constexpr std::string_view whitespace = " \t\r\n\f";

bool isOneOf(std::string_view name, auto... names) {
    return ((name == names) || ...);
}

bool startsALine(std::string_view tag) {
    return isOneOf(tag, "p", "div", "br", "tr", "ul", "ol", "li", "h1", "h2", "h3", "h4", "h5", "h6", "hr", "table",
                   "pre", "blockquote", "section", "header", "footer", "article", "title");
}

bool standsApart(std::string_view tag) {
    return isOneOf(tag, "p", "h1", "h2", "h3", "h4", "h5", "h6", "table", "blockquote");
}

std::string utf8Of(std::uint32_t point) {
    const auto byte = [](std::uint32_t bits) { return static_cast<char>(static_cast<unsigned char>(bits)); };
    if (point < 0x80)
        return {byte(point)};
    if (point < 0x800)
        return {byte(0xC0u | (point >> 6u)), byte(0x80u | (point & 0x3Fu))};
    if (point < 0x10000)
        return {byte(0xE0u | (point >> 12u)), byte(0x80u | ((point >> 6u) & 0x3Fu)), byte(0x80u | (point & 0x3Fu))};
    return {byte(0xF0u | (point >> 18u)), byte(0x80u | ((point >> 12u) & 0x3Fu)),
            byte(0x80u | ((point >> 6u) & 0x3Fu)), byte(0x80u | (point & 0x3Fu))};
}

/// The character for a reference such as "amp" or "#8217"; none if it is unknown.
std::optional<std::string> referenced(std::string_view name) {
    using Entity = std::pair<std::string_view, std::string_view>;
    static constexpr std::array entities{
        Entity{"amp", "&"},         Entity{"lt", "<"},         Entity{"gt", ">"},         Entity{"quot", "\""},
        Entity{"apos", "'"},        Entity{"nbsp", " "},       Entity{"ndash", "\u2013"}, Entity{"mdash", "\u2014"},
        Entity{"hellip", "\u2026"}, Entity{"rsquo", "\u2019"}, Entity{"lsquo", "\u2018"}, Entity{"ldquo", "\u201C"},
        Entity{"rdquo", "\u201D"},  Entity{"bull", "\u2022"},  Entity{"copy", "\u00A9"}};
    if (const auto found = std::ranges::find(entities, name, &Entity::first); found != entities.end())
        return std::string(found->second);
    if (!name.starts_with('#'))
        return std::nullopt;
    name.remove_prefix(1);
    const bool isHexadecimal = name.starts_with('x') || name.starts_with('X');
    if (isHexadecimal)
        name.remove_prefix(1);
    std::uint32_t point = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), point, isHexadecimal ? 16 : 10);
    const bool isCharacter = error == std::errc() && end == name.data() + name.size() && point >= 0x20 &&
                             point <= 0x10FFFF && (point < 0xD800 || point > 0xDFFF);
    return isCharacter ? std::optional(utf8Of(point)) : std::nullopt;
}

bool isTag(std::string_view text) {
    constexpr std::string_view first = "/!?abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    return text.size() > 1 && text[0] == '<' && first.find(text[1]) != std::string_view::npos;
}

/// At most that long, without an incomplete character at the end.
std::string shortened(std::string text) {
    if (text.size() <= maxNotesSize)
        return text;
    std::size_t end = maxNotesSize;
    while (end > 0 && isUtf8Continuation(text[end]))
        --end;
    text.resize(end);
    return text;
}

/// Words with single spaces between them, and never more than one empty line in a row.
class NotesWriter {
public:
    void add(std::string_view text) {
        if (!text_.empty())
            text_.append(std::exchange(newlines_, 0), '\n');
        newlines_ = 0;
        if (std::exchange(isSpaceDue_, false) && !text_.empty() && text_.back() != '\n' && text_.back() != ' ')
            text_ += ' ';
        text_ += text;
    }
    void addSpace() { isSpaceDue_ = newlines_ == 0; }
    /// At least `newlines`; two make an empty line.
    void startLine(std::size_t newlines) {
        newlines_ = std::max(newlines_, newlines);
        isSpaceDue_ = false;
    }
    [[nodiscard]] bool isFull() const { return text_.size() >= maxNotesSize; }
    [[nodiscard]] std::string take() { return std::move(text_); }

private:
    std::string text_;
    std::size_t newlines_ = 0;
    bool isSpaceDue_ = false;
};

class NotesReader {
public:
    explicit NotesReader(std::string_view html) : left_(html) {
        for (std::string_view rest = html; !isMarkup_ && !rest.empty(); rest.remove_prefix(1))
            isMarkup_ = isTag(rest);
    }

    std::string text() {
        while (!left_.empty() && !writer_.isFull()) {
            if (left_.starts_with("<!--"))
                skipPast("-->");
            else if (isTag(left_))
                readTag();
            else if (left_.front() == '&')
                readReference();
            else
                readCharacters();
        }
        return shortened(writer_.take());
    }

private:
    void skipPast(std::string_view end) {
        const std::size_t at = left_.find(end);
        left_.remove_prefix(at == std::string_view::npos ? left_.size() : at + end.size());
    }

    void readTag() {
        std::string_view name = left_.substr(1, left_.find_first_of(" \t\r\n\f>", 1) - 1);
        const bool isEnd = name.starts_with('/');
        name.remove_prefix(isEnd ? 1 : 0);
        const std::string tag = asciiLowercased(name.substr(0, name.find('/')));
        skipPast(">");
        if (!isEnd && isOneOf(tag, "script", "style"))
            skipElement(tag);
        if (startsALine(tag))
            writer_.startLine(standsApart(tag) ? 2 : 1);
        if (!isEnd && tag == "li")
            writer_.add("\u2022 ");
    }

    /// Up to the end tag, in upper or lower case.
    void skipElement(const std::string& tag) {
        while (!left_.empty()) {
            skipPast("</");
            if (asciiLowercased(left_.substr(0, tag.size())) == tag)
                return skipPast(">");
        }
    }

    void readReference() {
        constexpr std::size_t maxReferenceSize = 12;
        const std::size_t end = left_.substr(0, maxReferenceSize).find(';');
        const std::optional<std::string> character =
            end == std::string_view::npos ? std::nullopt : referenced(left_.substr(1, end - 1));
        if (character && *character == " ")
            writer_.addSpace();
        else
            writer_.add(character.value_or("&"));
        left_.remove_prefix(character ? end + 1 : 1);
    }

    void readCharacters() {
        const std::size_t spaces = std::min(left_.find_first_not_of(whitespace), left_.size());
        if (spaces > 0) {
            const auto newlines = std::ranges::count(left_.substr(0, spaces), '\n');
            if (isMarkup_ || newlines == 0)
                writer_.addSpace();
            else
                writer_.startLine(newlines == 1 ? 1 : 2);
            left_.remove_prefix(spaces);
            return;
        }
        const std::size_t end = std::min(left_.find_first_of(" \t\r\n\f<&", 1), left_.size());
        writer_.add(left_.substr(0, end));
        left_.remove_prefix(end);
    }

    std::string_view left_;
    bool isMarkup_ = false;
    NotesWriter writer_;
};

/// Defined by the format; nothing is ever fetched from there.
constexpr QLatin1String updateNamespace("http://www.andymatuschak.org/xml-namespaces/sparkle");
constexpr std::size_t maxItems = 500;
constexpr qsizetype maxFieldLength = 256;
constexpr qsizetype maxAddressLength = 2048;

/// Fields in an element of the item, or in an attribute of its enclosure.
struct Field {
    QLatin1String name;
    std::string AppcastItem::*member;
};
const std::array fields{
    Field{QLatin1String("version"), &AppcastItem::version},
    Field{QLatin1String("shortVersionString"), &AppcastItem::displayVersion},
    Field{QLatin1String("minimumSystemVersion"), &AppcastItem::minimumSystemVersion},
    Field{QLatin1String("os"), &AppcastItem::operatingSystem},
    Field{QLatin1String("hardwareRequirements"), &AppcastItem::hardware},
    Field{QLatin1String("channel"), &AppcastItem::channel},
    Field{QLatin1String("edSignature"), &AppcastItem::signature},
};

std::string fieldText(QStringView text) {
    const QStringView trimmed = text.trimmed();
    return trimmed.size() <= maxFieldLength ? trimmed.toString().toStdString() : std::string();
}

std::string addressText(QStringView text) {
    const QStringView trimmed = text.trimmed();
    const bool isUsable =
        trimmed.size() <= maxAddressLength && mayBeAsked(QUrl(trimmed.toString(), QUrl::StrictMode));
    return isUsable ? trimmed.toString().toStdString() : std::string();
}

class AppcastReader {
public:
    explicit AppcastReader(const QByteArray& bytes) : xml_(bytes) {}

    std::optional<std::vector<AppcastItem>> items() {
        if (!goToRoot() || xml_.name() != QLatin1String("rss"))
            return std::nullopt;
        while (xml_.readNextStartElement()) {
            if (xml_.name() == QLatin1String("channel"))
                readChannel();
            else
                xml_.skipCurrentElement();
        }
        while (!xml_.atEnd())
            xml_.readNext();
        if (xml_.hasError())
            return std::nullopt;
        for (AppcastItem& item : items_)
            complete(item);
        return std::move(items_);
    }

private:
    /// Returns false at a document type.
    bool goToRoot() {
        while (!xml_.atEnd() && !xml_.isStartElement()) {
            xml_.readNext();
            if (xml_.isDTD())
                return false;
        }
        return xml_.isStartElement();
    }

    void readChannel() {
        while (xml_.readNextStartElement()) {
            if (xml_.name() == QLatin1String("item") && items_.size() < maxItems)
                readItem();
            else if (isPlain("link"))
                channelPage_ = addressText(text());
            else
                xml_.skipCurrentElement();
        }
    }

    void readItem() {
        AppcastItem item;
        while (xml_.readNextStartElement()) {
            if (isPlain("enclosure"))
                readEnclosure(item);
            else if (isPlain("link"))
                item.pageURL = addressText(text());
            else if (isPlain("description"))
                item.notes = plainNotes(text().toStdString());
            else if (xml_.namespaceUri() == updateNamespace)
                readUpdateElement(item);
            else
                xml_.skipCurrentElement();
        }
        items_.push_back(std::move(item));
    }

    void readUpdateElement(AppcastItem& item) {
        for (const Field& field : fields) {
            if (xml_.name() == field.name) {
                item.*field.member = fieldText(text());
                return;
            }
        }
        if (xml_.name() == QLatin1String("releaseNotesLink"))
            item.notesURL = addressText(text());
        else
            xml_.skipCurrentElement();  // such as differences to older versions, with enclosures of their own
    }

    void readEnclosure(AppcastItem& item) {
        const QXmlStreamAttributes attributes = xml_.attributes();
        if (item.downloadURL.empty()) {
            item.downloadURL = addressText(attributes.value(QLatin1String("url")));
            item.length = attributes.value(QLatin1String("length")).toLongLong();
            for (const Field& field : fields) {
                if ((item.*field.member).empty())
                    item.*field.member = fieldText(attributes.value(updateNamespace, field.name));
            }
        }
        xml_.skipCurrentElement();
    }

    void complete(AppcastItem& item) const {
        if (item.version.empty())
            item.version = item.displayVersion;
        if (item.pageURL.empty())
            item.pageURL = channelPage_;
    }

    [[nodiscard]] bool isPlain(const char* name) const {
        return xml_.namespaceUri().isEmpty() && xml_.name() == QLatin1String(name);
    }
    QString text() { return xml_.readElementText(QXmlStreamReader::SkipChildElements); }

    QXmlStreamReader xml_;
    std::vector<AppcastItem> items_;
    std::string channelPage_;
};

}  // namespace

std::string plainNotes(std::string_view html) {
    return NotesReader(html).text();
}

std::optional<std::vector<AppcastItem>> readAppcast(const QByteArray& bytes) {
    return AppcastReader(bytes).items();
}

}  // namespace stowpocket
