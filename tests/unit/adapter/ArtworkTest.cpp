#include "adapter/linux/Artwork.h"

#include <QTemporaryDir>

#include <fstream>
#include <gmock/gmock.h>
#include <sys/stat.h>

namespace brindle::adapter {
namespace {

using namespace Qt::StringLiterals;
using Artwork::Kind;

class ArtworkFiles : public testing::Test
{
protected:
    /// Makes a file of this name; the path of it.
    QByteArray file(const QByteArray &name, const QByteArray &bytes) const
    {
        const QByteArray path = folder() + '/' + name;
        // Not by Qt, for which a name is text.
        std::ofstream made(path.toStdString(), std::ios::binary);
        made << bytes.toStdString();
        EXPECT_TRUE(made.flush());
        return path;
    }
    QByteArray folder() const { return m_folder.path().toUtf8(); }

private:
    QTemporaryDir m_folder;
};

TEST_F(ArtworkFiles, AFileIsReadByItsAddress)
{
    const QByteArray path = file("cover.png", "picture");
    EXPECT_EQ(Artwork::read("file://" + path), "cGljdHVyZQ==");
    EXPECT_EQ(Artwork::read("FILE://" + path), "cGljdHVyZQ==");
    EXPECT_EQ(Artwork::read("file://localhost" + path), "cGljdHVyZQ==");
    EXPECT_EQ(Artwork::read(path), "cGljdHVyZQ==");
}

TEST_F(ArtworkFiles, ANameWithAnyLetterIsFound)
{
    const QByteArray path = file("a b#c?d%e\xe4.png", "picture");
    QByteArray address = path.toPercentEncoding("/");
    EXPECT_EQ(Artwork::read("file://" + address), "cGljdHVyZQ==");
    address.replace("%23", "#").replace("%3F", "?").replace("%20", " ");
    EXPECT_EQ(Artwork::read("file://" + address), "cGljdHVyZQ==");
}

TEST_F(ArtworkFiles, AFileOfAnotherMachineIsNotRead)
{
    EXPECT_EQ(Artwork::read("file://elsewhere" + file("cover.png", "picture")), "");
}

TEST_F(ArtworkFiles, WhatIsNoPlainFileIsNotRead)
{
    const QByteArray pipe = folder() + "/pipe";
    ASSERT_EQ(::mkfifo(pipe.constData(), 0600), 0);
    for (const QByteArray &path :
        {folder(), pipe, QByteArray("/dev/zero"), QByteArray(folder() + "/missing"), QByteArray("/")})
        EXPECT_EQ(Artwork::read("file://" + path), "") << path.toStdString();
    EXPECT_EQ(Artwork::read("file://" + file("cover.png", "picture") + "%00"), "");
}

TEST_F(ArtworkFiles, AFileIsReadUpToTheLargestSize)
{
    const QByteArray path = file("large.png", QByteArray(Artwork::largest, 'x'));
    EXPECT_EQ(QByteArray::fromBase64(Artwork::read("file://" + path)).size(), Artwork::largest);
    file("large.png", QByteArray(Artwork::largest + 1, 'x'));
    EXPECT_EQ(Artwork::read("file://" + path), "");
}

TEST(Artwork, IsToldFromItsAddress)
{
    EXPECT_EQ(Artwork::kindOf("file:///a.png"), Kind::file);
    EXPECT_EQ(Artwork::kindOf("/a.png"), Kind::file);
    EXPECT_EQ(Artwork::kindOf("data:image/png;base64,QQ=="), Kind::data);
    EXPECT_EQ(Artwork::kindOf("https://example.org/a.png"), Kind::remote);
    EXPECT_EQ(Artwork::kindOf("HTTP://example.org/a.png"), Kind::remote);
    for (const char *address : {"", "a.png", "ftp://example.org/a.png", "javascript:1", "file:a", "fil"})
        EXPECT_EQ(Artwork::kindOf(address), Kind::none) << address;
}

TEST(Artwork, StandsInADataAddress)
{
    EXPECT_EQ(Artwork::read("data:image/png;base64,cGljdHVyZQ=="), "cGljdHVyZQ==");
    EXPECT_EQ(Artwork::read("DATA:image/png;charset=x;BASE64,cGljdHVyZQ=="), "cGljdHVyZQ==");
    EXPECT_EQ(Artwork::read("data:image/svg+xml,%3Csvg/%3E"), QByteArray("<svg/>").toBase64());
}

TEST(Artwork, InADataAddressIsWrittenAnewInStrictBase64)
{
    EXPECT_EQ(Artwork::read("data:;base64,cGlj dHVy\r\nZQ"), "cGljdHVyZQ==");
    EXPECT_EQ(Artwork::read("data:;base64,cGljdHVyZQ%3D%3D"), "cGljdHVyZQ==");
}

TEST(Artwork, ADamagedDataAddressHasNone)
{
    for (const char *address :
        {"data:", "data:image/png;base64", "data:;base64,", "data:;base64,@@@@", "data:,"})
        EXPECT_EQ(Artwork::read(address), "") << address;
}

TEST(Artwork, ADataAddressIsReadUpToTheLargestSize)
{
    const QByteArray head = "data:,";
    EXPECT_NE(Artwork::read(head + QByteArray(Artwork::largest, 'x')), "");
    EXPECT_EQ(Artwork::read(head + QByteArray(Artwork::largest + 1, 'x')), "");
}

TEST(Artwork, OfARemoteAddressIsNotReadHere)
{
    EXPECT_EQ(Artwork::read("http://127.0.0.1/a.png"), "");
}

} // namespace
} // namespace brindle::adapter
