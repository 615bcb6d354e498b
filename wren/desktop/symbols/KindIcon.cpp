#include "wren/desktop/symbols/KindIcon.h"

#include <QIconEngine>
#include <QPainter>
#include <QPixmap>

#include <map>

namespace wren {

namespace {

struct Picture {
    char letter;
    QRgb field;
};

// Colours group the kinds: types, what is called, values, what the preprocessor knows, scopes.
constexpr QRgb kType = qRgb(0x2a, 0x7a, 0xb8);
constexpr QRgb kCalled = qRgb(0x8a, 0x4f, 0xbf);
constexpr QRgb kValue = qRgb(0x2e, 0x8b, 0x57);
constexpr QRgb kMacro = qRgb(0xb0, 0x6a, 0x1c);
constexpr QRgb kScope = qRgb(0x6b, 0x72, 0x80);

Picture PictureOf(tagging::SymbolKind kind)
{
    using enum tagging::SymbolKind;
    switch (kind) {
    case Macro:
    case MacroParameter:
        return {'M', kMacro};
    case Function:
    case Prototype:
        return {'F', kCalled};
    case InstanceMethod:
    case InstanceMethodDeclaration:
        return {'-', kCalled};
    case ClassMethod:
    case ClassMethodDeclaration:
        return {'+', kCalled};
    case Signal:
    case Slot:
        return {'S', kCalled};
    case Class:
        return {'C', kType};
    case Struct:
        return {'S', kType};
    case Union:
        return {'U', kType};
    case Enum:
        return {'E', kType};
    case Typedef:
    case TemplateParameter:
        return {'T', kType};
    case Interface:
    case Implementation:
        return {'@', kType};
    case Protocol:
        return {'P', kType};
    case Category:
        return {'(', kType};
    case Enumerator:
        return {'e', kValue};
    case Member:
    case InstanceVariable:
    case Property:
    case QtProperty:
        return {'m', kValue};
    case Variable:
    case ExternVariable:
        return {'v', kValue};
    case Local:
    case Parameter:
        return {'l', kValue};
    case Label:
        return {':', kScope};
    case Namespace:
    case NamespaceAlias:
    case UsingName:
    case UsingNamespace:
        return {'N', kScope};
    case None:
        break;
    }
    return {' ', kScope};
}

class KindEngine : public QIconEngine {
public:
    explicit KindEngine(Picture picture) : picture(picture) {}

    QIconEngine* clone() const override { return new KindEngine(picture); }

    void paint(QPainter* painter, const QRect& where, QIcon::Mode, QIcon::State) override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(QColor(picture.field));
        const QRectF field = QRectF(where).adjusted(1, 1, -1, -1);
        painter->drawRoundedRect(field, field.width() / 5, field.width() / 5);
        QFont font = painter->font();
        font.setPixelSize(where.height() * 7 / 10);
        font.setBold(true);
        painter->setFont(font);
        painter->setPen(Qt::white);
        painter->drawText(where, Qt::AlignCenter, QString(QChar(picture.letter)));
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap drawn(size);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        paint(&painter, drawn.rect(), mode, state);
        return drawn;
    }

private:
    const Picture picture;
};

} // namespace

QIcon KindIcon(tagging::SymbolKind kind)
{
    static std::map<tagging::SymbolKind, QIcon> kept;
    QIcon& icon = kept[kind];
    if (icon.isNull())
        icon = QIcon(new KindEngine(PictureOf(kind)));
    return icon;
}

QString KindName(tagging::SymbolKind kind)
{
    if (kind == tagging::SymbolKind::None)
        return QStringLiteral("file");
    const std::string_view name = tagging::LongName(kind);
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

} // namespace wren
