#include "wren/desktop/Icons.h"

#include "wren/desktop/Pictures.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace wren {

namespace {

// Draws at each call with the colours of then. A class of its own paints.
class InkEngine : public QIconEngine {
public:
    explicit InkEngine(QPalette::ColorRole ink) : ink(ink) {}

    void paint(QPainter* painter, const QRect& where, QIcon::Mode mode, QIcon::State) override
    {
        painter->save();
        Draw(*painter, where, InkFor(mode));
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

protected:
    const QPalette::ColorRole ink;

private:
    virtual void Draw(QPainter& painter, const QRect& where, const QColor& colour) = 0;

    QColor InkFor(QIcon::Mode mode) const
    {
        const QPalette palette = QApplication::palette();
        if (mode == QIcon::Selected)
            return palette.color(QPalette::HighlightedText);
        return palette.color(mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Normal, ink);
    }
};

class CharacterEngine : public InkEngine {
public:
    CharacterEngine(QChar character, QPalette::ColorRole ink) : InkEngine(ink), character(character) {}

    QIconEngine* clone() const override { return new CharacterEngine(character, ink); }

private:
    void Draw(QPainter& painter, const QRect& where, const QColor& colour) override
    {
        QFont font = QApplication::font();
        font.setPixelSize(where.height());
        painter.setFont(font);
        painter.setPen(colour);
        painter.drawText(where, Qt::AlignCenter, character);
    }

    const QChar character;
};

class PictureEngine : public InkEngine {
public:
    explicit PictureEngine(const QString& name) : InkEngine(QPalette::WindowText), name(name) {}

    QIconEngine* clone() const override { return new PictureEngine(name); }

private:
    void Draw(QPainter& painter, const QRect& where, const QColor& colour) override
    {
        QSvgRenderer(PictureNamed(name, colour)).render(&painter, where);
    }

    const QString name;
};

} // namespace

QIcon IconNamed(const QString& name)
{
    return PictureNamed(name, Qt::black).isEmpty() ? QIcon() : QIcon(new PictureEngine(name));
}

QIcon DrawnIcon(QChar character, QPalette::ColorRole ink)
{
    return QIcon(new CharacterEngine(character, ink));
}

} // namespace wren
