#include "foundation/Files.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/linux/files/LinuxBundle.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace brindle {
namespace {

/// Both worlds hold the resource "words/yes.txt" and the value "Name": "Velmora".
class FilesWorld
{
public:
    FilesWorld()
    {
        write(QStringLiteral("a/Info.json"), R"({"Name": "Velmora"})");
        write(QStringLiteral("b/Info.json"), R"({"Name": "Another"})");
        write(QStringLiteral("b/words/yes.txt"), "yes");
        write(QStringLiteral("secret.txt"), "secret");
        m_bundle.emplace(
            QStringList{m_dir.filePath(QStringLiteral("a")), m_dir.filePath(QStringLiteral("b"))},
            frameworks());
    }

    Bundle &bundle() { return *m_bundle; }
    QString frameworks() const { return m_dir.filePath(QStringLiteral("b")); }

private:
    void write(const QString &name, const QByteArray &text) const
    {
        ASSERT_EQ(Files::writeAtomically(m_dir.filePath(name), text), std::nullopt);
    }

    QTemporaryDir m_dir;
    std::optional<LinuxBundle> m_bundle;
};

class FakeWorld
{
public:
    FakeWorld()
    {
        const QString name = QStringLiteral("words/yes.txt");
        const QString path = m_dir.filePath(QStringLiteral("yes.txt"));
        EXPECT_EQ(Files::writeAtomically(path, "yes"), std::nullopt);
        m_bundle.resources.insert(name, path);
        m_bundle.info.insert(QStringLiteral("Name"), QStringLiteral("Velmora"));
        m_bundle.frameworks = frameworks();
    }

    Bundle &bundle() { return m_bundle; }
    QString frameworks() const { return m_dir.path(); }

private:
    QTemporaryDir m_dir;
    FakeBundle m_bundle;
};

template <typename World> class BundleContract : public testing::Test
{
protected:
    Bundle &bundle() { return world.bundle(); }

    World world;
};

using Worlds = testing::Types<FakeWorld, FilesWorld>;
TYPED_TEST_SUITE(BundleContract, Worlds);

TYPED_TEST(BundleContract, AResourceHasAPathThatCanBeRead)
{
    const auto path = this->bundle().resourcePath(QStringLiteral("words/yes.txt"));
    ASSERT_TRUE(path);
    EXPECT_EQ(Files::read(*path), "yes");
}

TYPED_TEST(BundleContract, AnUnknownNameHasNone)
{
    for (const auto &name : {QStringLiteral("words/no.txt"), QStringLiteral("words"), QString()})
        EXPECT_EQ(this->bundle().resourcePath(name), std::nullopt) << name.toStdString();
}

TYPED_TEST(BundleContract, ANameThatLeadsOutHasNone)
{
    for (const auto &name : {QStringLiteral("../secret.txt"), QStringLiteral("words/../../secret.txt"),
             QStringLiteral("/etc/passwd"), QStringLiteral(":/brindle/Info.json"), QStringLiteral("..")})
        EXPECT_EQ(this->bundle().resourcePath(name), std::nullopt) << name.toStdString();
}

TYPED_TEST(BundleContract, ThePrivateFrameworksHaveTheirFolder)
{
    EXPECT_EQ(this->bundle().privateFrameworksPath(), this->world.frameworks());
}

TYPED_TEST(BundleContract, TheInformationDictionaryHasItsValues)
{
    EXPECT_EQ(this->bundle().infoValue(QStringLiteral("Name")), QStringLiteral("Velmora"));
    EXPECT_FALSE(this->bundle().infoValue(QStringLiteral("Missing")).isValid());
}

TEST(LinuxBundle, IsCompiledIntoTheProgram)
{
    const LinuxBundle bundle;
    EXPECT_EQ(bundle.infoValue(QStringLiteral("CFBundleIdentifier")), QStringLiteral("com.brindle.app"));
    EXPECT_EQ(bundle.infoValue(QStringLiteral("CFBundleName")), QStringLiteral("Velmora"));
    EXPECT_FALSE(bundle.infoValue(QStringLiteral("CFBundleVersion")).toString().isEmpty());
    EXPECT_FALSE(bundle.infoValue(QStringLiteral("BrindleThumbnailHost")).toString().isEmpty());
    EXPECT_FALSE(bundle.infoValue(QStringLiteral("BrindleShortLinkHost")).toString().isEmpty());
}

TEST(LinuxBundle, WithoutADictionaryHasNoValues)
{
    const QTemporaryDir folder;
    const LinuxBundle bundle({folder.path()});
    EXPECT_FALSE(bundle.infoValue(QStringLiteral("CFBundleName")).isValid());
}

TEST(LinuxBundle, WithoutTheFolderHasNoPrivateFrameworks)
{
    const QTemporaryDir folder;
    const LinuxBundle bundle({folder.path()}, folder.filePath(QStringLiteral("frameworks")));
    EXPECT_EQ(bundle.privateFrameworksPath(), std::nullopt);
}

} // namespace
} // namespace brindle
