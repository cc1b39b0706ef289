// SPDX-License-Identifier: MIT
#include "views/controls/Theme.h"
#include "WindowFixtures.h"

#include <QFontInfo>

#include <cmath>
#include <map>

namespace stowpocket {
namespace {

/// Of 255: how far a colour may be from the nearest in the other picture, a pixel away at most.
constexpr int colorTolerance = 60;
/// Pixels that have no like in the other picture, in a square of that side: smoothing strews a few of them over all
/// edges, whatever is missing leaves a heap.
constexpr int strayPixels = 8;
constexpr int squareSide = 16;

bool hasLikeNearby(QRgb color, const QImage& image, int x, int y) {
    for (int row = std::max(0, y - 1); row <= std::min(image.height() - 1, y + 1); ++row) {
        for (int column = std::max(0, x - 1); column <= std::min(image.width() - 1, x + 1); ++column) {
            const QRgb other = image.pixel(column, row);
            if (std::max({std::abs(qRed(color) - qRed(other)), std::abs(qGreen(color) - qGreen(other)),
                          std::abs(qBlue(color) - qBlue(other))}) <= colorTolerance)
                return true;
        }
    }
    return false;
}

/// Whether all of the image has its like in the reference.
bool isContained(const QImage& image, const QImage& reference) {
    std::map<std::pair<int, int>, int> strays;  // by square
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const bool isStray = !hasLikeNearby(image.pixel(x, y), reference, x, y);
            if (isStray && ++strays[{x / squareSide, y / squareSide}] > strayPixels)
                return false;
        }
    }
    return true;
}

/// For as long as it lives, views look the same on every machine: one font, unhinted, and colours of our own.
class FixedLook {
public:
    explicit FixedLook(Appearance appearance) {
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setHintingPreference(QFont::PreferNoHinting);
        EXPECT_EQ(QFontInfo(font).family(), font.family()) << "the font of the pictures is not installed";
        QApplication::setFont(font);
        QApplication::setPalette(appearance == Appearance::dark ? Theme::darkPalette()
                                                                : QPalette(QColor(0xef, 0xef, 0xef)));
    }
    ~FixedLook() {
        QApplication::setFont(font_);
        QApplication::setPalette(QPalette());
    }
    FixedLook(const FixedLook&) = delete;
    FixedLook& operator=(const FixedLook&) = delete;

private:
    const QFont font_ = QApplication::font();
};

/// Compares the widget, as it is painted at one pixel a point, with tests/views/pictures/<name>.png: the edges of
/// what is drawn may be smoothed otherwise, but nothing may be missing, moved or of another colour. What was painted
/// instead is left beside the test as <name>.png. With STOWPOCKET_UPDATE_PICTURES set the picture is written anew:
/// look at it before it is committed.
void expectLooksLike(QWidget& widget, const std::string& name) {
    const QString file = QString::fromStdString(name + ".png");
    const QString path = QStringLiteral(REFERENCE_PICTURES "/") + file;
    QImage shown(widget.size(), QImage::Format_RGB32);
    widget.render(&shown);
    if (qEnvironmentVariableIsSet("STOWPOCKET_UPDATE_PICTURES")) {
        EXPECT_TRUE(shown.save(path)) << path.toStdString();
        return;
    }
    const QImage reference(path);
    if (shown.size() != reference.size() || !isContained(shown, reference) || !isContained(reference, shown)) {
        shown.save(file);
        ADD_FAILURE() << "painted otherwise than in " << path.toStdString() << "; see " << name << ".png here";
    }
}

constexpr std::pair<Appearance, const char*> appearances[] = {{Appearance::light, "-light"},
                                                              {Appearance::dark, "-dark"}};

TEST(PictureTest, theShelfLooksAsItShould) {
    const std::pair<std::string, std::function<void(ShelfViewFixture & shelf)>> scenes[] = {
        {"empty", [](auto& shelf) { shelf.manager->clear(); }},
        {"three", [](auto&) {}},
        {"notice", [](auto& shelf) { shelf.preferences.setValue(shelfCapacityKey, 3); }},
        {"missing", [](auto& shelf) { shelf.loseFile(1); }},
        {"selected", [](auto&) {}},
        {"full",
         [](auto& shelf) {
             shelf.room = 420;
             shelf.addFiles(15);
             shelf.viewModel->addFileURLs(shelf.makeFiles(5, 100));
         }},
    };
    for (const auto& [appearance, suffix] : appearances) {
        const FixedLook look(appearance);
        for (const auto& [name, scene] : scenes) {
            ShelfViewFixture shelf;
            shelf.addThreeFiles();
            scene(shelf);
            shelf.open();
            if (name == "selected")
                click(shelf.tiles()[1]);
            expectLooksLike(shelf.host, "shelf-" + name + suffix);
        }
    }
}

TEST(PictureTest, everyTabOfTheSettingsLooksAsItShould) {
    for (const auto& [appearance, suffix] : appearances) {
        const FixedLook look(appearance);
        SettingsViewFixture window;
        window.bundle.infoDictionary =
            PropertyValue::Dictionary{{std::string(infoKey::bundleShortVersionString), "2.3"}};
        window.addThreeFiles();
        window.openSettings(window.viewModel);
        for (const auto& [tab, name] :
             {std::pair("About", "about"), {"More Larkfield", "more"}, {"General", "general"}}) {
            window.openTab(tab);
            window.settings->setFocus();
            expectLooksLike(window.host, std::string("settings-") + name + suffix);
        }
        window.preferences.setValue(preferenceKey::quickDropKeyCode, 1);
        window.shortcut(0).click();
        expectLooksLike(window.host, std::string("settings-recording") + suffix);
        window.shortcut(0).click();
    }
}

/// Its colours are its own: a light desktop shows best where they are not.
TEST(PictureTest, theFirstRunLooksAsItShould) {
    const FixedLook look(Appearance::light);
    OnboardingFixture moving;
    moving.clock->advance(Seconds(1.2));
    expectLooksLike(moving.view, "onboarding-welcome");

    moving.getStarted()->click();
    moving.clock->advance(Seconds(0.9 + 0.3 / 4));
    expectLooksLike(moving.view, "onboarding-badge");  // its circle is drawn, its mark is on the way
    moving.clock->advance(Seconds(2.3 + 2.0 / 2 - 0.9 - 0.3 / 4));
    expectLooksLike(moving.view, "onboarding-closing");  // the light is half across the button
}

double luminance(const QColor& color) {
    const auto linear = [](float value) { return std::pow(double(value), 2.2); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// The contrast of `above`, which may be translucent, on `below`.
double contrast(const QColor& above, const QColor& below) {
    QImage pixel(1, 1, QImage::Format_RGB32);
    pixel.fill(below);
    QPainter(&pixel).fillRect(0, 0, 1, 1, above);
    const double one = luminance(pixel.pixelColor(0, 0));
    const double other = luminance(below);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

TEST(ThemeTest, everyTextCanBeReadOnLightAndDarkWindows) {
    QPalette highContrast(Qt::yellow, Qt::black, Qt::white, Qt::black, Qt::gray, Qt::yellow, Qt::black);
    highContrast.setColor(QPalette::Highlight, Qt::cyan);
    for (const QPalette& palette : {QPalette(QColor(0xef, 0xef, 0xef)), QPalette(Qt::white), highContrast,
                                    QPalette(QColor(0x2a, 0x2a, 0x2c)), Theme::darkPalette()}) {
        const QColor window = palette.color(QPalette::Window);
        for (const ColorRole role : {ColorRole::primary, ColorRole::secondary, ColorRole::tertiary, ColorRole::orange,
                                     ColorRole::accent, ColorRole::red, ColorRole::focus})
            EXPECT_GE(contrast(Theme::color(role, palette), window), 3)
                << int(role) << " on " << window.name().toStdString();
        EXPECT_GE(contrast(Theme::color(ColorRole::onBanner, palette), Theme::color(ColorRole::banner, palette)), 3);
        EXPECT_GE(contrast(Theme::color(ColorRole::onDisc, palette), Theme::color(ColorRole::redDisc, palette)), 3);
    }
}

TEST(SymbolTest, isSharpOnDenseScreensAndShowsCrossingLinesOnce) {
    const QImage power = Symbol::image("power", 16, FontWeight::regular, {Qt::black}, 2);
    EXPECT_EQ(power.size(), QSize(40, 40));
    EXPECT_EQ(power.devicePixelRatio(), 2);
    const QImage glass = Symbol::image("tray.and.arrow.down", 32, FontWeight::regular, {QColor(0, 0, 0, 150)}, 1);
    for (int y = 0; y < glass.height(); ++y) {
        for (int x = 0; x < glass.width(); ++x)
            ASSERT_LE(qAlpha(glass.pixel(x, y)), 150);
    }
}

}  // namespace
}  // namespace stowpocket
