// SPDX-License-Identifier: MIT
#include "views/controls/Compose.h"

#include "views/controls/Drawing.h"
#include "views/controls/Theme.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QFontMetrics>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>

#include <algorithm>

namespace stowpocket {
namespace {

struct Adder {
    QBoxLayout& layout;
    Qt::Alignment alignment;

    void operator()(QWidget* widget) const { layout.addWidget(widget, 0, alignment); }
    void operator()(QLayout* stack) const { layout.addLayout(stack); }
    void operator()(Spacer) const { layout.addStretch(1); }
};

/// A stack whose elements are all hidden takes no room, not even for its padding.
class Stack : public QBoxLayout {
public:
    using QBoxLayout::QBoxLayout;
    [[nodiscard]] QSize sizeHint() const override { return isEmpty() ? QSize(0, 0) : QBoxLayout::sizeHint(); }
    [[nodiscard]] QSize minimumSize() const override { return isEmpty() ? QSize(0, 0) : QBoxLayout::minimumSize(); }
    [[nodiscard]] int heightForWidth(int width) const override {
        return isEmpty() ? 0 : QBoxLayout::heightForWidth(width);
    }
};

class SymbolView : public QWidget {
public:
    SymbolView(std::string_view name, SymbolStyle style) : name_(name), style_(style) {
        setFixedSize(Symbol::side(style.pointSize), Symbol::side(style.pointSize));
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        FadingView::applyOpacity(painter, *this);
        drawSymbol(painter, rect(), name_, style_, *this);
    }

private:
    const std::string name_;
    const SymbolStyle style_;
};

class Divider : public QWidget {
public:
    Divider() {
        setFixedHeight(1);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(rect(), Theme::color(ColorRole::separator, palette()));
    }
};

class Panel : public QWidget {
public:
    Panel(QLayout* stack, Background background) : background_(background) { compose(*this, stack); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        FadingView::applyOpacity(painter, *this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Theme::color(background_.role, palette(), background_.opacity));
        const double radius = std::min({background_.cornerRadius, width() / 2.0, height() / 2.0});
        painter.drawRoundedRect(rect(), radius, radius);
    }

private:
    const Background background_;
};

constexpr auto roleProperty = "accessibleRole";

class RoleInterface : public QAccessibleWidget {
public:
    RoleInterface(QWidget* view, QAccessible::Role role) : QAccessibleWidget(view, role) {}

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        if (role() == QAccessible::PageTab) {
            state.selectable = true;
            state.selected = button() != nullptr && button()->isChecked();
        }
        return state;
    }
    [[nodiscard]] QStringList actionNames() const override {
        return (button() == nullptr ? QStringList() : QStringList(pressAction())) + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& name) override {
        if (button() != nullptr && name == pressAction())
            button()->click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    [[nodiscard]] QAbstractButton* button() const { return qobject_cast<QAbstractButton*>(widget()); }
};

QAccessibleInterface* interfaceOf(const QString&, QObject* object) {
    const QVariant role = object->property(roleProperty);
    auto* const view = qobject_cast<QWidget*>(object);
    return role.isValid() && view != nullptr ? new RoleInterface(view, QAccessible::Role(role.toInt())) : nullptr;
}

}  // namespace

QLayout* stack(Qt::Orientation orientation, int spacing, std::initializer_list<Element> elements) {
    const bool isRow = orientation == Qt::Horizontal;
    auto* const layout = new Stack(isRow ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    layout->setContentsMargins({});
    layout->setSpacing(spacing);
    for (const Element& element : elements)
        std::visit(Adder{*layout, isRow ? Qt::AlignVCenter : Qt::Alignment()}, element);
    return layout;
}

QLayout* padded(QLayout* stack, Padding padding) {
    stack->setContentsMargins(padding.horizontal, padding.top, padding.horizontal, padding.bottom);
    return stack;
}

QLayout* padded(QWidget* view, Padding padding) {
    return padded(vstack(0, view), padding);
}

QLayout* centred(QWidget* view) {
    return hstack(0, Spacer{}, view, Spacer{});
}

void compose(QWidget& view, QLayout* stack) {
    view.setLayout(stack);
}

Text::Text(const QString& text, TextStyle style) : QLabel(text), role_(style.role) {
    setTextFormat(Qt::PlainText);
    setFont(Theme::font(style.pointSize, style.weight));
}

void Text::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    FadingView::applyOpacity(painter, *this);
    painter.setPen(Theme::color(role_, palette()));
    const int wrap = wordWrap() ? int(Qt::TextWordWrap) : 0;
    painter.drawText(contentsRect(), int(QStyle::visualAlignment(layoutDirection(), alignment())) | wrap, text());
}

Text* text(const QString& text, TextStyle style) {
    return new Text(text, style);
}

Text* paragraph(const QString& words, TextStyle style, Qt::Alignment alignment) {
    Text* const paragraph = text(words, style);
    paragraph->setWordWrap(true);
    paragraph->setAlignment(alignment);
    return paragraph;
}

QString displayText(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

void drawSymbol(QPainter& painter, const QRectF& rect, std::string_view name, const SymbolStyle& style,
                const QWidget& view) {
    const SymbolColors colors{Theme::color(style.role, view.palette(), style.opacity),
                              Theme::color(style.secondaryRole, view.palette())};
    const QImage image = Symbol::image(name, style.pointSize, style.weight, colors, view.devicePixelRatioF());
    const QSizeF size = image.deviceIndependentSize();
    painter.drawImage(
        QPointF(rect.x() + (rect.width() - size.width()) / 2, rect.y() + (rect.height() - size.height()) / 2), image);
}

QWidget* symbol(std::string_view name, SymbolStyle style) {
    return new SymbolView(name, style);
}

QWidget* divider() {
    return new Divider;
}

QWidget* group(QLayout* stack) {
    auto* const view = new QWidget;
    compose(*view, stack);
    return view;
}

QWidget* panel(QLayout* stack, Background background) {
    return new Panel(stack, background);
}

QStringList brokenIntoLines(const QString& text, const QFont& font, int width) {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QTextLayout layout(text, font);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        lines.append(text.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    return lines;
}

QStringList brokenIntoTwoLines(const QString& text, const QFont& font, int width) {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QTextLayout layout(text, font);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine first = layout.createLine();
    if (!first.isValid())
        return {};
    first.setLineWidth(width);
    layout.endLayout();

    const QString rest = text.mid(first.textLength()).trimmed();
    QStringList lines{text.left(first.textLength()).trimmed()};
    if (!rest.isEmpty())
        lines.append(QFontMetrics(font).elidedText(rest, Qt::ElideMiddle, width));
    return lines;
}

void setAccessibleRole(QWidget& view, QAccessible::Role role) {
    static const bool isInstalled = [] {
        QAccessible::installFactory(interfaceOf);
        return true;
    }();
    Q_UNUSED(isInstalled);
    view.setProperty(roleProperty, int(role));
}

}  // namespace stowpocket
