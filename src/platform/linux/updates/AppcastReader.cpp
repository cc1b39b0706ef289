// SPDX-License-Identifier: MIT
#include "platform/linux/updates/AppcastReader.h"

#include "platform/linux/updates/NotesText.h"
#include "platform/linux/updates/UpdateHelperProtocol.h"

#include <QUrl>
#include <QXmlStreamReader>

#include <array>

namespace stowpocket {
namespace {

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

std::optional<std::vector<AppcastItem>> readAppcast(const QByteArray& bytes) {
    return AppcastReader(bytes).items();
}

}  // namespace stowpocket
