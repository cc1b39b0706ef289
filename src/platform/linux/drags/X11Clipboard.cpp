// SPDX-License-Identifier: MIT
#include "platform/linux/drags/X11Clipboard.h"

#include "intake/ExchangeFormats.h"
#include "services/MainBundle.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <algorithm>
#include <condition_variable>
#include <mutex>

namespace stowpocket {
namespace {

/// Delivers the bytes of each form as they are. QMimeData would turn lists of URLs into QUrls and back.
class FormsData : public QMimeData {
public:
    explicit FormsData(std::vector<ClipboardForm> forms) : forms_(std::move(forms)) {}

    [[nodiscard]] QStringList formats() const override {
        QStringList types;
        for (const ClipboardForm& form : forms_)
            types.push_back(QString::fromStdString(form.type));
        return types;
    }
    [[nodiscard]] bool hasFormat(const QString& type) const override { return formats().contains(type); }

protected:
    [[nodiscard]] QVariant retrieveData(const QString& type, QMetaType) const override {
        const auto form = std::ranges::find(forms_, type.toStdString(), &ClipboardForm::type);
        return form == forms_.end() ? QVariant() : QByteArray::fromStdString(form->bytes);
    }

private:
    const std::vector<ClipboardForm> forms_;
};

void offer(std::vector<ClipboardForm> forms) {
    QGuiApplication::clipboard()->setMimeData(new FormsData(std::move(forms)));
}

/// Any thread. Waits for the owner.
DropReading readingOfClipboard(const DropPatience& patience) {
    constexpr SelectionInTime clipboard{"CLIPBOARD"};
    const auto session = XcbSession::open();
    return session ? readSelection(*session, clipboard, offeredFormats(*session, clipboard, patience), patience)
                   : DropReading();
}

/// To Qt's window that has asked the manager. An answer that nobody waits for does nothing.
void answerForManager(XcbSession& session, xcb_window_t owner) {
    xcb_selection_notify_event_t answer{};
    answer.response_type = XCB_SELECTION_NOTIFY;
    answer.requestor = owner;
    answer.selection = session.atom("CLIPBOARD_MANAGER");
    answer.target = session.atom("SAVE_TARGETS");
    sendEvent(session.raw(), owner, XCB_EVENT_MASK_NO_EVENT, answer);
}

void answerUntilTheEnd(const std::stop_token& end) {
    constexpr std::chrono::seconds patience{1};
    const auto session = XcbSession::open();
    if (!session)
        return;
    const xcb_window_t owner = session->selectionOwner(session->atom("CLIPBOARD"));
    std::mutex mutex;
    std::unique_lock lock(mutex);
    std::condition_variable_any ended;
    while (!ended.wait_for(lock, end, patience, [&end] { return end.stop_requested(); }))
        answerForManager(*session, owner);
}

}  // namespace

void X11Clipboard::copyFiles(const std::vector<FileURL>& files) {
    offer(clipboardFormsOf(files));
}

void X11Clipboard::copyText(const std::string& text) {
    offer({{"text/plain", text}});
}

void X11Clipboard::read(Completion completion) {
    if (*isReading_)
        return completion({});
    *isReading_ = true;
    auto work = [&dispatch = dispatch_, isReading = isReading_, patience = patience_,
                 completion = std::move(completion)] {
        auto reading = std::make_shared<const DropReading>(readingOfClipboard(patience));
        dispatch.async([&dispatch, isReading, completion, reading = std::move(reading)] {
            *isReading = false;
            ReceivedDrop received{reading->uriList, nullptr};
            if (reading->contents)
                received.contents = providerOf(*reading->contents, dispatch);
            completion(itemProvidersOf(received));
        });
    };
    dispatch_.serialQueue(std::string(bundleIdentifier) + ".pasted")->async(std::move(work));
}

void ClipboardHandOver::begin() {
    if (QGuiApplication::clipboard()->ownsClipboard())
        answering_ = std::jthread(answerUntilTheEnd);
}

}  // namespace stowpocket
