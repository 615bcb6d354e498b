#include "wren/desktop/IcnsIcon.h"

#include <QFile>
#include <QPixmap>
#include <QtEndian>

namespace wren {

namespace {

constexpr qsizetype kHeader = 8; // four letters, and the length with the header: big-endian

qsizetype LengthAt(const QByteArray& bytes, qsizetype offset)
{
    return qFromBigEndian<quint32>(bytes.constData() + offset + 4);
}

} // namespace

QIcon ReadIcns(const std::string& path)
{
    QIcon icon;
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly))
        return icon;
    const QByteArray bytes = file.readAll();
    if (!bytes.startsWith("icns"))
        return icon;
    for (qsizetype offset = kHeader; offset + kHeader <= bytes.size();) {
        const qsizetype length = LengthAt(bytes, offset);
        if (length < kHeader || offset + length > bytes.size())
            break;
        QPixmap picture;
        if (picture.loadFromData(bytes.mid(offset + kHeader, length - kHeader), "PNG"))
            icon.addPixmap(picture);
        offset += length;
    }
    return icon;
}

} // namespace wren
