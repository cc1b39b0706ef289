// SPDX-License-Identifier: MIT
#include "platform/linux/drags/X11Clipboard.h"

#include "intake/ExchangeFormats.h"
#include "services/MainBundle.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <algorithm>

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

}  // namespace stowpocket
