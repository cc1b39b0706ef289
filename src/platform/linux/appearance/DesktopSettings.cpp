// SPDX-License-Identifier: MIT
#include "platform/linux/appearance/DesktopSettings.h"

#include "platform/linux/dbus/BusCalls.h"
#include "platform/linux/x11/X11Connection.h"

#include <QDBusMessage>
#include <QDBusVariant>

#include <algorithm>
#include <utility>
#include <variant>

namespace stowpocket {
namespace {

enum class SettingType : std::uint32_t { integer = 0, string = 1, color = 2 };

/// Reads the bytes in the byte order of the writer. After the end every value is zero, and the reading has failed.
class Reader {
public:
    /// The first byte is the byte order, padded to four bytes.
    explicit Reader(std::string_view bytes) : left_(bytes), isBigEndian_(!bytes.empty() && bytes.front() != 0) {
        skip(4);
    }

    [[nodiscard]] bool hasFailed() const { return hasFailed_; }

    std::uint32_t number(std::size_t size) {
        std::uint32_t value = 0;
        const std::string_view taken = bytes(size);
        for (std::size_t at = 0; at < taken.size(); ++at)
            value = value << 8u | static_cast<std::uint8_t>(taken[isBigEndian_ ? at : taken.size() - 1 - at]);
        return value;
    }
    std::string_view bytes(std::size_t size) {
        hasFailed_ = hasFailed_ || size > left_.size();
        if (hasFailed_)
            return {};
        const std::string_view taken = left_.substr(0, size);
        left_.remove_prefix(size);
        return taken;
    }
    /// A text is padded to a multiple of four bytes.
    std::string_view text(std::size_t size) {
        const std::string_view taken = bytes(size);
        skip((4 - size % 4) % 4);
        return taken;
    }
    void skip(std::size_t size) { static_cast<void>(bytes(size)); }

private:
    std::string_view left_;
    const bool isBigEndian_;
    bool hasFailed_ = false;
};

using Value = std::variant<std::int32_t, std::string>;

/// Nothing for a colour.
std::optional<Value> valueOf(std::string_view property, std::string_view name) {
    Reader reader(property);
    reader.skip(4);  // the serial number
    for (std::uint32_t left = reader.number(4); left > 0 && !reader.hasFailed(); --left) {
        const auto type = SettingType{reader.number(1)};
        reader.skip(1);
        const bool isWanted = reader.text(reader.number(2)) == name;
        reader.skip(4);  // when it was changed last
        std::optional<Value> value;
        if (type == SettingType::integer)
            value = static_cast<std::int32_t>(reader.number(4));
        else if (type == SettingType::string)
            value = std::string(reader.text(reader.number(4)));
        else if (type == SettingType::color)
            reader.skip(8);
        else
            return std::nullopt;
        if (isWanted && value && !reader.hasFailed())
            return value;
    }
    return std::nullopt;
}

// The Settings interface of the desktop portal.
const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settings = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");

/// Portals wrap the value in a second variant.
QVariant unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

ColorScheme schemeOf(const QDBusMessage& reply) {
    const QVariant value = unwrapped(reply.arguments().value(0));
    if (reply.type() != QDBusMessage::ReplyMessage || value.typeId() != QMetaType::UInt)
        return ColorScheme::noPreference;
    switch (value.toUInt()) {
    case 1:
        return ColorScheme::dark;
    case 2:
        return ColorScheme::light;
    default:
        return ColorScheme::noPreference;
    }
}

}  // namespace

std::optional<std::int32_t> integerXSetting(std::string_view property, std::string_view name) {
    const std::optional<Value> value = valueOf(property, name);
    const auto* const number = value ? std::get_if<std::int32_t>(&*value) : nullptr;
    return number == nullptr ? std::nullopt : std::optional(*number);
}

std::optional<std::string> textXSetting(std::string_view property, std::string_view name) {
    const std::optional<Value> value = valueOf(property, name);
    const auto* const text = value ? std::get_if<std::string>(&*value) : nullptr;
    return text == nullptr ? std::nullopt : std::optional(*text);
}

bool isDarkThemeName(std::string_view name) {
    constexpr std::string_view mark = "-dark";
    const auto isSame = [](char one, char other) {
        return one == other || (one >= 'A' && one <= 'Z' && one + 32 == other);
    };
    const auto found = std::search(name.begin(), name.end(), mark.begin(), mark.end(), isSame);
    return found != name.end() && (found + mark.size() == name.end() || found[mark.size()] == '-');
}

bool isMotionReduced(const X11Connection& connection) {
    const xcb_window_t owner = connection.selectionOwner(X11Atom::settingsOwner);
    if (owner == x11None)
        return false;
    return integerXSetting(connection.text(owner, X11Atom::settings).value_or(""), "Gtk/EnableAnimations") == 0;
}

PortalColorScheme::PortalColorScheme(const QDBusConnection& bus, std::function<void(ColorScheme)> onAnswer)
    : bus_(bus), onAnswer_(std::move(onAnswer)) {
    asking_.setSingleShot(true);
    asking_.setInterval(0);
    QObject::connect(&asking_, &QTimer::timeout, [this] { askForScheme(); });
    // From any sender: if it were named, Qt would wait for the bus to say who that is.
    bus_.connect({}, portalPath, settings, QStringLiteral("SettingChanged"), {appearance, colorScheme}, {}, &asking_,
                 SLOT(start()));
    asking_.start();
}

void PortalColorScheme::askForScheme() {
    QDBusMessage question = QDBusMessage::createMethodCall(portal, portalPath, settings, QStringLiteral("Read"));
    question << appearance << colorScheme;
    callOnBus(bus_, question, asking_, [this](const QDBusMessage& answer) { onAnswer_(schemeOf(answer)); });
}

X11ThemeWatch::X11ThemeWatch(const X11Connection& connection, std::function<void(bool)> onAnswer)
    : connection_(connection), onAnswer_(std::move(onAnswer)) {
    reading_.setSingleShot(true);
    reading_.setInterval(0);
    QObject::connect(&reading_, &QTimer::timeout, [this] { readTheme(); });
    reading_.start();
}

bool X11ThemeWatch::handleEvent(const xcb_generic_event_t& event) {
    bool isOurs = false;
    if (const auto* const change = eventAs<xcb_property_notify_event_t>(event))
        isOurs = change->window == owner_ && change->atom == connection_.atom(X11Atom::settings);
    else if (const auto* const gone = eventAs<xcb_destroy_notify_event_t>(event))
        isOurs = gone->window == owner_;
    else if (const auto* const announced = eventAs<xcb_client_message_event_t>(event))
        isOurs = announced->type == connection_.atom(X11Atom::manager) &&
                 announced->data.data32[1] == connection_.atom(X11Atom::settingsOwner);
    if (isOurs)
        reading_.start();
    return false;
}

void X11ThemeWatch::readTheme() {
    // A new manager of the settings announces itself there.
    connection_.hearAlso(connection_.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    owner_ = connection_.selectionOwner(X11Atom::settingsOwner);
    if (owner_ == x11None)
        return onAnswer_(false);
    connection_.hearAlso(owner_, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    const std::string bytes = connection_.text(owner_, X11Atom::settings).value_or("");
    onAnswer_(isDarkThemeName(textXSetting(bytes, "Net/ThemeName").value_or("")));
}

DesktopColorScheme::DesktopColorScheme(const QDBusConnection& bus, const X11Connection& connection,
                                       std::function<void(bool)> onChange)
    : onChange_(std::move(onChange)),
      portal_(bus, [this](ColorScheme scheme) { decide(scheme, isThemeDark_); }),
      theme_(connection, [this](bool isDark) { decide(wish_, isDark); }) {}

void DesktopColorScheme::decide(ColorScheme wish, bool isThemeDark) {
    wish_ = wish;
    isThemeDark_ = isThemeDark;
    const bool isDark = wish == ColorScheme::noPreference ? isThemeDark : wish == ColorScheme::dark;
    if (std::exchange(isDark_, isDark) != isDark)
        onChange_(isDark);
}

}  // namespace stowpocket
