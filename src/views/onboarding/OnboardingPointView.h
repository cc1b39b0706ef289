// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/OnboardingPresentation.h"

#include <QLabel>
#include <QStringList>

#include <string>

namespace stowpocket {

/// One of the points on the welcome screen: a symbol and a text that rise into their place. Below its text it is
/// higher by the way that they rise, `travel`. Assistive technology reads the text.
class OnboardingPointView : public QLabel {
public:
    static constexpr int travel = 8;

    OnboardingPointView(std::string_view symbolName, const QString& text, int width);
    void evaluate(const OnboardingPresentation::Point& shown);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const std::string symbolName_;
    const QStringList lines_;
    OnboardingPresentation::Point shown_;
};

}  // namespace stowpocket
