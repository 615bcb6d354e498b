#include "wren/desktop/Icons.h"

#include <QApplication>
#include <QIconEngine>
#include <QMap>
#include <QPainter>
#include <QPixmap>
#include <QStyle>

namespace wren {

namespace {

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

class CharacterEngine : public QIconEngine {
public:
    CharacterEngine(QChar character, QPalette::ColorRole ink) : character(character), ink(ink) {}

    QIconEngine* clone() const override { return new CharacterEngine(character, ink); }

    void paint(QPainter* painter, const QRect& where, QIcon::Mode mode, QIcon::State) override
    {
        const QPalette::ColorGroup group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Normal;
        QFont font = QApplication::font();
        font.setPixelSize(where.height());
        painter->save();
        painter->setFont(font);
        painter->setPen(QApplication::palette().color(group, ink));
        painter->drawText(where, Qt::AlignCenter, character);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, picture.rect(), mode, state);
        return picture;
    }

private:
    const QChar character;
    const QPalette::ColorRole ink;
};

QIcon Drawn(const QString& name)
{
    static const QMap<QString, QChar> kCharacters = {{"edit-undo", QChar(0x21B6)}, {"edit-redo", QChar(0x21B7)}};
    return kCharacters.contains(name) ? DrawnIcon(kCharacters[name], QPalette::WindowText) : QIcon();
}

} // namespace

QIcon IconNamed(const QString& name)
{
    if (QIcon::hasThemeIcon(name))
        return QIcon::fromTheme(name);
    const QIcon ofStyle = FromStyle(name);
    return ofStyle.isNull() ? Drawn(name) : ofStyle;
}

QIcon DrawnIcon(QChar character, QPalette::ColorRole ink)
{
    return QIcon(new CharacterEngine(character, ink));
}

} // namespace wren
