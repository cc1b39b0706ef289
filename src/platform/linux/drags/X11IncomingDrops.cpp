// SPDX-License-Identifier: MIT
#include "platform/linux/drags/X11IncomingDrops.h"

#include "intake/FileLists.h"
#include "platform/linux/drags/DirectSaves.h"
#include "platform/linux/files/DurableFile.h"
#include "services/MainBundle.h"

#include <QFile>
#include <QSysInfo>

#include <fcntl.h>

#include <algorithm>

namespace stowpocket {
namespace {

constexpr std::string_view uriListFormat = "text/uri-list";

bool offers(const std::vector<std::string>& formats, std::string_view format) {
    return std::ranges::find(formats, format) != formats.end();
}

bool namesFiles(const std::string& list) {
    return !filesOfUriList(list, QSysInfo::machineHostName().toStdString()).empty();
}

std::vector<std::span<const ContentsKind>> wantedKinds(const std::vector<std::string>& formats) {
    if (offers(formats, DirectSaves::format))
        return {pictureKinds()};
    return {pictureKinds(), textKinds()};
}

std::optional<DroppedContents> contentsOf(DragData& data, const std::vector<std::string>& formats) {
    for (const std::span<const ContentsKind> kinds : wantedKinds(formats)) {
        for (const ContentsKind& kind : kinds) {
            const std::string_view format(kind.format.data(), static_cast<std::size_t>(kind.format.size()));
            if (!offers(formats, format))
                continue;
            DroppedContents contents(kind);
            const std::optional<SelectionFailure> failure = data.write(format, contents.path());
            if (!failure)
                return contents;
            if (failure == SelectionFailure::late)
                return std::nullopt;
        }
    }
    return std::nullopt;
}

/// The places of the fields in the messages (XDND 5).
constexpr std::size_t sourceField = 0;
constexpr std::size_t flagsField = 1;
constexpr std::size_t firstTypeField = 2;
constexpr std::size_t dropTimeField = 2;
constexpr std::uint32_t hasTypeListFlag = 1;

constexpr std::size_t longestTypeList = 4096;
constexpr std::size_t longestList = 1u << 20;
constexpr std::size_t largestContents = 256u << 20;
constexpr int mostReadings = 4;

class SelectionDragData : public DragData {
public:
    SelectionDragData(XcbSession& session, xcb_timestamp_t dropTime, const DropPatience& patience)
        : reader_(session, "XdndSelection"), dropTime_(dropTime), patience_(patience) {}

    [[nodiscard]] List list(std::string_view format) override {
        std::vector<std::byte> bytes;
        const auto answer = reader_.read(std::string(format), dropTime_, {start_ + patience_.list, patience_.silence},
                                         longestList, bytes);
        const auto* const text = reinterpret_cast<const char*>(bytes.data());
        if (answer.failure || answer.format != 8)
            return {answer.failure.value_or(SelectionFailure::refused), {}};
        return {std::nullopt, {text, bytes.size()}};
    }

    [[nodiscard]] std::optional<SelectionFailure> write(std::string_view format, const QString& path) override {
        const FileDescriptor file(
            ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
        if (!file.isOpen())
            return SelectionFailure::refused;
        std::size_t size = 0;
        const auto answer = reader_.read(
            std::string(format), dropTime_, {start_ + patience_.contents, patience_.silence}, [&](auto part) {
                size += part.size();
                const std::string_view bytes(reinterpret_cast<const char*>(part.data()), part.size());
                return size <= largestContents && !writeAll(file.get(), bytes);
            });
        const bool isUsable = answer.format == 8 && size > 0;
        return answer.failure || isUsable ? answer.failure : SelectionFailure::refused;
    }

private:
    SelectionReader reader_;
    const xcb_timestamp_t dropTime_;
    const DropPatience patience_;
    const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// The message contains three types. If there are more, the window of the source has the full list.
std::vector<std::string> formatsOf(XcbSession& session, const xcb_client_message_event_t& entered) {
    const auto& fields = entered.data.data32;
    std::vector<xcb_atom_t> types(std::begin(fields) + firstTypeField, std::end(fields));
    if ((fields[flagsField] & hasTypeListFlag) != 0)
        types = session.property(fields[sourceField], session.atom(X11Atom::dragTypeList), longestTypeList).words();
    std::erase(types, xcb_atom_t{XCB_ATOM_NONE});
    return session.namesOf(types);
}

/// Any thread. Waits for the source.
DropReading readingOf(const xcb_client_message_event_t& drop, const xcb_client_message_event_t& entered,
                      const DropPatience& patience) {
    DropReading reading;
    if (const auto session = XcbSession::open()) {
        SelectionDragData data(*session, drop.data.data32[dropTimeField], patience);
        reading = readDrop(data, formatsOf(*session, entered));
    }
    return reading;
}

}  // namespace

DropReading readDrop(DragData& data, const std::vector<std::string>& formats) {
    DropReading reading;
    if (offers(formats, uriListFormat)) {
        DragData::List list = data.list(uriListFormat);
        // A silent source would be silent again, and too long a list is no accident.
        if (list.failure == SelectionFailure::late || list.failure == SelectionFailure::tooBig)
            return reading;
        if (!list.failure && namesFiles(list.text)) {
            reading.uriList = std::move(list.text);
            return reading;
        }
    }
    reading.contents = contentsOf(data, formats);
    return reading;
}

X11IncomingDrops::X11IncomingDrops(const X11Connection& connection, Dispatch& dispatch, DirectSaves& saves,
                                   const DropPatience& patience)
    : connection_(connection), dispatch_(dispatch), saves_(saves), patience_(patience) {}

bool X11IncomingDrops::promisesFiles(const QMimeData& data) const {
    return data.hasFormat(QLatin1String(DirectSaves::format.data(), DirectSaves::format.size()));
}

bool X11IncomingDrops::handleEvent(const xcb_generic_event_t& event) {
    const auto* const said = eventAs<xcb_client_message_event_t>(event);
    if (said == nullptr || said->format != 32)
        return false;
    if (said->type == connection_.atom(X11Atom::dragEnter))
        handleEnter(*said);
    return said->type == connection_.atom(X11Atom::dragDrop) && handleDrop(*said);
}

void X11IncomingDrops::handleEnter(const xcb_client_message_event_t& message) {
    entered_ = message;
    forgetDrag();
}

void X11IncomingDrops::forgetDrag() {
    ++number_;
    state_ = State::idle;
    received_ = {};
}

bool X11IncomingDrops::handleDrop(const xcb_client_message_event_t& message) {
    if (state_ == State::reading)
        return true;
    if (state_ == State::handedOn) {
        // Qt handles the message right after this.
        later([this, number = number_] { number == number_ ? forgetDrag() : void(); });
        return false;
    }
    if (message.data.data32[sourceField] != entered_.data.data32[sourceField] || readings_ == mostReadings)
        return false;
    read(message);
    return true;
}

void X11IncomingDrops::read(const xcb_client_message_event_t& drop) {
    state_ = State::reading;
    ++readings_;
    auto work = [&dispatch = dispatch_, self = std::weak_ptr(self_), entered = entered_, drop, number = number_,
                 patience = patience_] {
        auto reading = std::make_shared<const DropReading>(readingOf(drop, entered, patience));
        dispatch.async([self, drop, number, reading = std::move(reading)] {
            if (const auto drops = self.lock())
                (*drops)->finishReading(drop, number, *reading);
        });
    };
    dispatch_.serialQueue(std::string(bundleIdentifier) + ".dragged")->async(std::move(work));
}

void X11IncomingDrops::finishReading(const xcb_client_message_event_t& drop, int number, const DropReading& reading) {
    --readings_;
    if (number != number_)
        return;
    received_.uriList = reading.uriList;
    if (reading.contents)
        received_.contents = providerOf(*reading.contents, dispatch_);
    state_ = State::handedOn;
    sendEvent(connection_.raw(), drop.window, XCB_EVENT_MASK_NO_EVENT, drop);
}

}  // namespace stowpocket
