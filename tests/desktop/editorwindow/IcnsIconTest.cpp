// Icon files of bundles: their pictures, and damage of all kinds.
#include "wren/desktop/IcnsIcon.h"

#include "tests/support/TempDirectory.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QtEndian>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

namespace {

constexpr int kRed = 200, kGreen = 100, kBlue = 50, kMask = 128;

QByteArray Number(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

QByteArray Entry(const char* kind, const QByteArray& content)
{
    return kind + Number(static_cast<quint32>(content.size()) + 8) + content;
}

QByteArray File(const QByteArray& entries)
{
    return Entry("icns", entries);
}

QByteArray Png(int side)
{
    QImage image(side, side, QImage::Format_ARGB32);
    image.fill(Qt::green);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

// That many pixels of one value: a byte of them as it is, then repetitions, the last of which are as many as are left.
QByteArray Packed(int value, int pixels)
{
    QByteArray bytes;
    bytes.append('\0').append(static_cast<char>(value));
    for (int left = pixels - 1; left > 0;) {
        const int run = left <= 130 ? left : std::min(left - 3, 130); // one that is shorter than three is none
        bytes.append(static_cast<char>(run + 125)).append(static_cast<char>(value));
        left -= run;
    }
    return bytes;
}

QByteArray Colours(int side)
{
    return Packed(kRed, side * side) + Packed(kGreen, side * side) + Packed(kBlue, side * side);
}

QByteArray Mask(int side)
{
    return QByteArray(static_cast<qsizetype>(side) * side, static_cast<char>(kMask));
}

class IcnsIcon : public ::testing::Test {
protected:
    QIcon Read(const QByteArray& bytes) const
    {
        return wren::ReadIcns(directory.Write("icon.icns", bytes.toStdString()));
    }
    std::vector<int> Sides(const QByteArray& bytes) const
    {
        std::vector<int> sides;
        for (const QSize& size : Read(bytes).availableSizes())
            sides.push_back(size.width());
        return sides;
    }

    const TempDirectory directory;
};

} // namespace

TEST_F(IcnsIcon, ReadsAllKindsOfPictures)
{
    EXPECT_THAT(Sides(File(Entry("ic08", Png(256)) + Entry("is32", Colours(16)) + Entry("s8mk", Mask(16)) +
                           Entry("l8mk", Mask(32)) + Entry("il32", Colours(32)) + Entry("ih32", Colours(48)) +
                           Entry("h8mk", Mask(48)) + Entry("it32", Number(0) + Colours(128)) +
                           Entry("t8mk", Mask(128)) + Entry("TOC ", "what is unknown is passed over"))),
                UnorderedElementsAre(256, 16, 32, 48, 128));
}

TEST_F(IcnsIcon, ReadsPackedColoursWithTheirMask)
{
    const QByteArray bytes = File(Entry("is32", Colours(16)) + Entry("s8mk", Mask(16)));
    const QImage image = Read(bytes).pixmap(16, 16).toImage();
    ASSERT_EQ(image.size(), QSize(16, 16));
    for (const QPoint place : {QPoint(0, 0), QPoint(15, 0), QPoint(7, 9), QPoint(15, 15)}) {
        const QColor colour = image.pixelColor(place);
        EXPECT_EQ(colour.alpha(), kMask);
        EXPECT_NEAR(colour.red(), kRed, 1); // as a screen keeps what is half transparent
        EXPECT_NEAR(colour.green(), kGreen, 1);
        EXPECT_NEAR(colour.blue(), kBlue, 1);
    }
}

TEST_F(IcnsIcon, IsEmptyForADamagedFile)
{
    const QByteArray colours = Entry("is32", Colours(16));
    const QByteArray mask = Entry("s8mk", Mask(16));
    const QByteArray png = Png(64);
    const struct {
        const char* why;
        QByteArray bytes;
    } kFiles[] = {
        {"nothing", ""},
        {"less than a header", "icns"},
        {"a header alone", File("")},
        {"another kind of file", png},
        {"other letters", "snci" + File(Entry("ic08", png)).mid(4)},
        {"an entry without a length", File("ic08")},
        {"a length of nothing", File("ic08" + Number(0) + png)},
        {"a length shorter than its header", File("ic08" + Number(7) + png)},
        {"a length beyond the end", File("ic08" + Number(static_cast<quint32>(png.size()) + 9) + png)},
        {"the greatest length", File("ic08" + Number(0xffffffff) + png)},
        {"a picture without content", File(Entry("ic08", ""))},
        {"a picture that is none", File(Entry("ic08", QByteArray(5000, 'x')))},
        {"a picture that is cut off in its header", File(Entry("ic08", png.left(20)))},
        {"colours without a mask", File(colours)},
        {"a mask without colours", File(mask)},
        {"a mask that is too short", File(colours + Entry("s8mk", Mask(16).chopped(1)))},
        {"a mask of another size", File(colours + Entry("s8mk", Mask(32)))},
        {"colours that are too few", File(Entry("is32", Colours(16).chopped(2)) + mask)},
        {"colours that are too many", File(Entry("is32", Colours(16) + Packed(1, 10)) + mask)},
        {"far too many", File(Entry("is32", QByteArray(1'000'000, '\xff')) + mask)},
        {"a repetition of nothing", File(Entry("is32", "\xff") + mask)},
        {"bytes that are not there", File(Entry("is32", "\x7f") + mask)},
        {"colours shorter than what is unused before them", File(Entry("it32", "x") + Entry("t8mk", Mask(128)))},
    };
    for (const auto& [why, bytes] : kFiles)
        EXPECT_TRUE(Read(bytes).isNull()) << why;
}

TEST_F(IcnsIcon, IsEmptyWithoutAFile)
{
    EXPECT_TRUE(wren::ReadIcns(directory / "missing.icns").isNull());
    EXPECT_TRUE(wren::ReadIcns(directory.Path()).isNull());
    EXPECT_TRUE(wren::ReadIcns("").isNull());
}

TEST_F(IcnsIcon, HasThePicturesBeforeATruncation)
{
    const QByteArray first = Entry("is32", Colours(16)) + Entry("s8mk", Mask(16));
    const QByteArray bytes = File(first + Entry("ic08", Png(32)));
    for (qsizetype length = 0; length < bytes.size(); ++length) {
        const std::vector<int> sides = Sides(bytes.left(length));
        EXPECT_EQ(sides, length < first.size() + 8 ? std::vector<int>() : std::vector{16}) << length;
    }
}

TEST_F(IcnsIcon, KeepsTheOtherPictureWhenAnyByteIsDamaged)
{
    const QByteArray bytes = File(Entry("is32", Colours(16)) + Entry("s8mk", Mask(16)) + Entry("ic08", Png(32)));
    for (qsizetype at = 0; at < bytes.size(); ++at)
        for (const char damage : {'\x01', '\x80'}) {
            QByteArray damaged = bytes;
            damaged[at] = static_cast<char>(damaged[at] ^ damage);
            for (const int side : Sides(damaged))
                EXPECT_TRUE(side == 16 || side == 32) << "byte " << at << ": " << side;
        }
}
