#include "wren/desktop/Icons.h"

#include <QApplication>
#include <QImage>
#include <QPixmap>

#include <gtest/gtest.h>

namespace {

// Of the most opaque point.
int Lightness(const QIcon& icon, QIcon::Mode mode = QIcon::Normal)
{
    const QImage picture = icon.pixmap(QSize(64, 64), mode).toImage();
    QColor ink(Qt::transparent);
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixelColor(x, y).alpha() > ink.alpha())
                ink = picture.pixelColor(x, y);
    EXPECT_GT(ink.alpha(), 128) << "nothing is drawn";
    return ink.lightness();
}

QPalette Inked(QPalette::ColorRole role, const QColor& ink)
{
    QPalette palette;
    palette.setColor(role, ink);
    palette.setColor(QPalette::Disabled, role, Qt::gray);
    return palette;
}

} // namespace

TEST(Icons, DrawnIconsFollowTheColours)
{
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::ToolTipText}) {
        const QIcon icon = wren::DrawnIcon('x', role);
        QApplication::setPalette(Inked(role, Qt::black));
        EXPECT_LT(Lightness(icon), 40);
        QApplication::setPalette(Inked(role, Qt::white));
        EXPECT_GT(Lightness(icon), 215);
        EXPECT_NEAR(Lightness(icon, QIcon::Disabled), QColor(Qt::gray).lightness(), 40)
            << "what cannot be chosen is grey";
    }
    QApplication::setPalette(QPalette());
}

TEST(Icons, PicturesFollowTheColours)
{
    const QIcon icon = wren::IconNamed("process-stop");
    QApplication::setPalette(Inked(QPalette::WindowText, Qt::black));
    EXPECT_LT(Lightness(icon), 40);
    QApplication::setPalette(Inked(QPalette::WindowText, Qt::white));
    EXPECT_GT(Lightness(icon), 215);
    EXPECT_NEAR(Lightness(icon, QIcon::Disabled), QColor(Qt::gray).lightness(), 40);
    QApplication::setPalette(QPalette());
}

TEST(Icons, ANameWithoutAPictureHasNoIcon)
{
    EXPECT_TRUE(wren::IconNamed("nothing-of-that-name").isNull());
}
