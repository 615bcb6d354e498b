#include "wren/desktop/IcnsIcon.h"

#include <QFile>
#include <QImage>
#include <QMap>
#include <QPixmap>
#include <QtEndian>

namespace wren {

namespace {

constexpr qsizetype kHeader = 8; // four letters, and the length with the header: big-endian

// A size of which the colours and the mask are entries of their own.
struct PackedKind {
    const char* colours;
    const char* mask;
    int side;              // pixels
    qsizetype unusedStart; // bytes of nothing before the colours
};
constexpr PackedKind kPackedKinds[] = {
    {"is32", "s8mk", 16, 0}, {"il32", "l8mk", 32, 0}, {"ih32", "h8mk", 48, 0}, {"it32", "t8mk", 128, 4}};

QMap<QByteArray, QByteArray> EntriesOf(const QByteArray& bytes)
{
    QMap<QByteArray, QByteArray> entries;
    if (!bytes.startsWith("icns"))
        return entries;
    for (qsizetype offset = kHeader; offset + kHeader <= bytes.size();) {
        const qsizetype length = qFromBigEndian<quint32>(bytes.constData() + offset + 4);
        if (length < kHeader || offset + length > bytes.size())
            break;
        entries[bytes.mid(offset, 4)] = bytes.mid(offset + kHeader, length - kHeader);
        offset += length;
    }
    return entries;
}

// The red, the green and the blue bytes of all pixels, one after the other. A byte below 128 is followed by as many
// bytes and one more; another stands for 3 to 130 repetitions of the next. No picture has more than 'most' bytes.
QByteArray Unpacked(const QByteArray& packed, qsizetype start, qsizetype most)
{
    QByteArray bytes;
    for (qsizetype at = start; at < packed.size() && bytes.size() <= most;) {
        const int code = static_cast<unsigned char>(packed[at++]);
        if (code < 128) {
            bytes.append(packed.mid(at, code + 1));
            at += code + 1;
        } else if (at < packed.size()) {
            bytes.append(code - 125, packed[at++]);
        }
    }
    return bytes;
}

QPixmap ReadPacked(const QMap<QByteArray, QByteArray>& entries, const PackedKind& kind)
{
    const qsizetype pixels = static_cast<qsizetype>(kind.side) * kind.side;
    const QByteArray colours = Unpacked(entries.value(kind.colours), kind.unusedStart, 3 * pixels);
    const QByteArray mask = entries.value(kind.mask);
    if (colours.size() != 3 * pixels || mask.size() != pixels)
        return {};
    const auto at = [](const QByteArray& bytes, qsizetype index) { return static_cast<unsigned char>(bytes[index]); };
    QImage image(kind.side, kind.side, QImage::Format_ARGB32);
    for (qsizetype pixel = 0; pixel < pixels; ++pixel)
        image.setPixel(
            static_cast<int>(pixel % kind.side), static_cast<int>(pixel / kind.side),
            qRgba(at(colours, pixel), at(colours, pixels + pixel), at(colours, 2 * pixels + pixel), at(mask, pixel)));
    return QPixmap::fromImage(image);
}

} // namespace

QIcon ReadIcns(const std::string& path)
{
    QIcon icon;
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly))
        return icon;
    const QMap<QByteArray, QByteArray> entries = EntriesOf(file.readAll());
    for (const QByteArray& entry : entries)
        if (QPixmap picture; picture.loadFromData(entry, "PNG"))
            icon.addPixmap(picture);
    for (const PackedKind& kind : kPackedKinds)
        if (const QPixmap picture = ReadPacked(entries, kind); !picture.isNull())
            icon.addPixmap(picture);
    return icon;
}

} // namespace wren
