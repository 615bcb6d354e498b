#include "wren/desktop/Icons.h"

#include <QApplication>
#include <QMap>
#include <QPainter>
#include <QPixmap>
#include <QStyle>

namespace wren {

namespace {

constexpr int kSide = 32; // pixels

QIcon FromStyle(const QString& name)
{
    static const QMap<QString, QStyle::StandardPixmap> kPictures = {
        {"document-save", QStyle::SP_DialogSaveButton},
        {"document-open", QStyle::SP_DialogOpenButton},
        {"go-previous", QStyle::SP_ArrowBack},
        {"go-next", QStyle::SP_ArrowForward},
    };
    return kPictures.contains(name) ? QApplication::style()->standardIcon(kPictures[name]) : QIcon();
}

// A character of the font, in the colour of text.
QIcon Drawn(const QString& name)
{
    static const QMap<QString, QChar> kCharacters = {{"edit-undo", QChar(0x21B6)}, {"edit-redo", QChar(0x21B7)}};
    if (!kCharacters.contains(name))
        return QIcon();
    QIcon icon;
    for (const QPalette::ColorGroup group : {QPalette::Normal, QPalette::Disabled}) {
        QPixmap picture(kSide, kSide);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        QFont font = QApplication::font();
        font.setPixelSize(kSide);
        painter.setFont(font);
        painter.setPen(QApplication::palette().color(group, QPalette::WindowText));
        painter.drawText(picture.rect(), Qt::AlignCenter, kCharacters[name]);
        icon.addPixmap(picture, group == QPalette::Normal ? QIcon::Normal : QIcon::Disabled);
    }
    return icon;
}

} // namespace

QIcon IconNamed(const QString& name)
{
    if (QIcon::hasThemeIcon(name))
        return QIcon::fromTheme(name);
    const QIcon ofStyle = FromStyle(name);
    return ofStyle.isNull() ? Drawn(name) : ofStyle;
}

} // namespace wren
