#include "foundation/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <csignal>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace brindle {
namespace {

class FilesTest : public testing::Test
{
protected:
    QString path(const QString &name) const { return dir.filePath(name); }
    QStringList entries() const { return QDir(dir.path()).entryList(QDir::Files | QDir::Hidden); }

    QTemporaryDir dir;
};

/// No file may grow beyond this while it stands: what a full disk looks like to a writer.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    void (*m_handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
    rlimit m_before{};
};

TEST_F(FilesTest, WhatWasWrittenIsRead)
{
    const QByteArray contents("a\0b\n", 4);
    EXPECT_EQ(Files::writeAtomically(path(QStringLiteral("file")), contents), std::nullopt);
    EXPECT_EQ(Files::read(path(QStringLiteral("file"))), contents);
}

TEST_F(FilesTest, AFileThatIsMissingIsAbsentAndAnEmptyOneIsNot)
{
    EXPECT_EQ(Files::read(path(QStringLiteral("missing"))), std::nullopt);
    EXPECT_EQ(Files::read(dir.path()), std::nullopt);
    EXPECT_EQ(Files::writeAtomically(path(QStringLiteral("empty")), {}), std::nullopt);
    EXPECT_EQ(Files::read(path(QStringLiteral("empty"))), QByteArray());
}

TEST_F(FilesTest, AFileOfOthersIsReadUpToItsLimit)
{
    ASSERT_EQ(Files::writeAtomically(path(QStringLiteral("file")), "1234"), std::nullopt);
    EXPECT_EQ(Files::readAtMost(4, path(QStringLiteral("file"))), "1234");
    EXPECT_EQ(Files::readAtMost(3, path(QStringLiteral("file"))), std::nullopt);
    EXPECT_EQ(Files::readAtMost(3, path(QStringLiteral("missing"))), std::nullopt);
    EXPECT_NE(Files::readAtMost(0x10000, QStringLiteral("/proc/self/status")), std::nullopt)
        << "the system's own files do not tell their size";
}

TEST_F(FilesTest, WhatIsNoPlainFileHoldsNobodyUp)
{
    EXPECT_EQ(Files::readAtMost(4, dir.path()), std::nullopt);
    EXPECT_EQ(Files::readAtMost(4, QStringLiteral("/dev/zero")), std::nullopt);
    ASSERT_EQ(::mkfifo(QFile::encodeName(path(QStringLiteral("pipe"))).constData(), 0600), 0);
    EXPECT_EQ(Files::readAtMost(4, path(QStringLiteral("pipe"))), std::nullopt);
}

TEST_F(FilesTest, FoldersAndFileAreForTheUserAlone)
{
    const QString file = path(QStringLiteral("one/two/file"));
    ASSERT_EQ(Files::writeAtomically(file, "x"), std::nullopt);
    constexpr auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther
        | QFile::WriteOther | QFile::ExeOther;
    for (const auto &made : {file, path(QStringLiteral("one/two")), path(QStringLiteral("one"))})
        EXPECT_FALSE(QFileInfo(made).permissions() & others) << made.toStdString();
}

TEST_F(FilesTest, AFileThatOthersCouldReadBecomesTheUsersAlone)
{
    const QString file = path(QStringLiteral("file"));
    ASSERT_EQ(Files::writeAtomically(file, "x"), std::nullopt);
    ASSERT_TRUE(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther));
    ASSERT_EQ(Files::writeAtomically(file, "y"), std::nullopt);
    EXPECT_FALSE(QFileInfo(file).permissions() & QFile::ReadOther);
}

TEST_F(FilesTest, TheOldContentsStayWholeForWhoeverHasThemOpen)
{
    const QString name = path(QStringLiteral("file"));
    ASSERT_EQ(Files::writeAtomically(name, "old"), std::nullopt);
    QFile reader(name);
    ASSERT_TRUE(reader.open(QIODevice::ReadOnly));
    ASSERT_EQ(Files::writeAtomically(name, "new and longer"), std::nullopt);
    EXPECT_EQ(reader.readAll(), "old");
    EXPECT_EQ(Files::read(name), "new and longer");
    EXPECT_EQ(entries().size(), 1);
}

TEST_F(FilesTest, AFullDiskIsToldAndLeavesTheOldFileAsItWas)
{
    const QString name = path(QStringLiteral("file"));
    ASSERT_EQ(Files::writeAtomically(name, "old"), std::nullopt);
    {
        const FileSizeLimit limit(4096);
        EXPECT_EQ(Files::writeAtomically(name, QByteArray(100000, 'x')), Files::Error::noSpace);
    }
    EXPECT_EQ(Files::read(name), "old");
    EXPECT_EQ(entries().size(), 1);
}

TEST_F(FilesTest, AFileInTheWayOfAFolderIsTold)
{
    ASSERT_EQ(Files::writeAtomically(path(QStringLiteral("file")), "x"), std::nullopt);
    EXPECT_EQ(Files::writeAtomically(path(QStringLiteral("file/inner/other")), "y"), Files::Error::noFolder);
    EXPECT_EQ(Files::read(path(QStringLiteral("file"))), "x");
}

TEST_F(FilesTest, AFolderOfThatNameIsLeftAlone)
{
    ASSERT_EQ(Files::writeAtomically(path(QStringLiteral("folder/file")), "x"), std::nullopt);
    EXPECT_EQ(Files::writeAtomically(path(QStringLiteral("folder")), "y"), Files::Error::refused);
    EXPECT_EQ(Files::read(path(QStringLiteral("folder/file"))), "x");
}

} // namespace
} // namespace brindle
