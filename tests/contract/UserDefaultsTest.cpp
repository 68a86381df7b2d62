#include "foundation/Files.h"
#include "foundation/Json.h"
#include "foundation/ManualScheduler.h"
#include "platform/fake/FakeUserDefaults.h"
#include "platform/linux/files/JsonUserDefaults.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <limits>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

const QString key = QStringLiteral("key");
const QDateTime moment = QDateTime(QDate(2026, 11, 21), QTime(8, 15, 30, 250), Qt::UTC);

class FakeWorld
{
public:
    UserDefaults &defaults() { return m_defaults; }
    /// What is stored survives the program, what is registered does not.
    void relaunch() { m_defaults.registered.clear(); }

private:
    FakeUserDefaults m_defaults;
};

class JsonWorld
{
public:
    UserDefaults &defaults()
    {
        if (!m_defaults)
            m_defaults.emplace(folder(), time);
        return *m_defaults;
    }
    void relaunch() { m_defaults.reset(); }
    /// As if the program were killed: nothing that waits is written.
    void kill()
    {
        QDir().rename(m_dir.filePath(QStringLiteral("now")), m_dir.filePath(QStringLiteral("then")));
        m_defaults.reset();
        QDir(m_dir.filePath(QStringLiteral("now"))).removeRecursively();
        QDir().rename(m_dir.filePath(QStringLiteral("then")), m_dir.filePath(QStringLiteral("now")));
    }
    QString folder() const { return m_dir.filePath(QStringLiteral("now")); }
    QString path() const { return folder() + QStringLiteral("/com.brindle.app/defaults.json"); }
    QStringList files() const { return QFileInfo(path()).dir().entryList(QDir::Files); }
    QByteArray text() const { return Files::read(path()).value_or(QByteArray()); }
    void write(const QByteArray &text) const
    {
        ASSERT_EQ(Files::writeAtomically(path(), text), std::nullopt);
    }

    ManualScheduler time;

private:
    QTemporaryDir m_dir;
    std::optional<JsonUserDefaults> m_defaults;
};

template <typename World> class UserDefaultsContract : public testing::Test
{
protected:
    UserDefaults &defaults() { return world.defaults(); }
    void relaunch() { world.relaunch(); }

    World world;
};

using Worlds = testing::Types<FakeWorld, JsonWorld>;
TYPED_TEST_SUITE(UserDefaultsContract, Worlds);

TYPED_TEST(UserDefaultsContract, AKeyThatWasNeverSetReadsAsTheTypesZero)
{
    EXPECT_FALSE(this->defaults().boolForKey(key));
    EXPECT_EQ(this->defaults().doubleForKey(key), 0);
    EXPECT_EQ(this->defaults().integerForKey(key), 0);
    EXPECT_EQ(this->defaults().stringForKey(key), std::nullopt);
    EXPECT_EQ(this->defaults().stringArrayForKey(key), std::nullopt);
    EXPECT_FALSE(this->defaults().objectForKey(key).isValid());
}

TYPED_TEST(UserDefaultsContract, AWriteIsSeenAtOnceAndAfterARelaunch)
{
    const QStringList list{QStringLiteral("a"), QStringLiteral("ü")};
    const qint64 large = (qint64(1) << 62) + 1;
    this->defaults().setBool(QStringLiteral("bool"), true);
    this->defaults().setDouble(QStringLiteral("double"), 0.1);
    this->defaults().setInteger(QStringLiteral("integer"), large);
    this->defaults().setObject(QStringLiteral("string"), QStringLiteral("line\n\"quoted\" ü"));
    this->defaults().setObject(QStringLiteral("list"), list);
    this->defaults().setObject(QStringLiteral("date"), moment);
    for (int launch = 0; launch < 2; ++launch) {
        const UserDefaults &defaults = this->defaults();
        EXPECT_TRUE(defaults.boolForKey(QStringLiteral("bool")));
        EXPECT_EQ(defaults.doubleForKey(QStringLiteral("double")), 0.1);
        EXPECT_EQ(defaults.integerForKey(QStringLiteral("integer")), large);
        EXPECT_THAT(
            defaults.stringForKey(QStringLiteral("string")), Optional(QStringLiteral("line\n\"quoted\" ü")));
        EXPECT_THAT(defaults.stringArrayForKey(QStringLiteral("list")), Optional(list));
        EXPECT_EQ(defaults.objectForKey(QStringLiteral("date")).toDateTime(), moment);
        this->relaunch();
    }
}

TYPED_TEST(UserDefaultsContract, TypesSurviveARelaunch)
{
    this->defaults().setBool(QStringLiteral("bool"), false);
    this->defaults().setDouble(QStringLiteral("double"), 260);
    this->defaults().setInteger(QStringLiteral("integer"), 1);
    this->defaults().setObject(QStringLiteral("string"), QString());
    this->defaults().setObject(QStringLiteral("list"), QStringList());
    this->defaults().setObject(QStringLiteral("date"), moment);
    for (int launch = 0; launch < 2; ++launch) {
        const auto type = [this](
                              const QString &name) { return this->defaults().objectForKey(name).typeId(); };
        EXPECT_EQ(type(QStringLiteral("bool")), QMetaType::Bool);
        EXPECT_EQ(type(QStringLiteral("double")), QMetaType::Double);
        EXPECT_EQ(type(QStringLiteral("integer")), QMetaType::LongLong);
        EXPECT_EQ(type(QStringLiteral("string")), QMetaType::QString);
        EXPECT_EQ(type(QStringLiteral("list")), QMetaType::QStringList);
        EXPECT_EQ(type(QStringLiteral("date")), QMetaType::QDateTime);
        this->relaunch();
    }
}

TYPED_TEST(UserDefaultsContract, AStoredValueGoesBeforeARegisteredOne)
{
    this->defaults().registerDefaults({{key, 1.5}});
    EXPECT_EQ(this->defaults().doubleForKey(key), 1.5);
    this->defaults().setDouble(key, 0);
    EXPECT_EQ(this->defaults().doubleForKey(key), 0);
}

TYPED_TEST(UserDefaultsContract, ALaterRegistrationReplacesOnlyItsOwnKeys)
{
    const QString other = QStringLiteral("other");
    this->defaults().registerDefaults({{key, 1.0}, {other, 2.0}});
    this->defaults().registerDefaults({{key, 3.0}});
    EXPECT_EQ(this->defaults().doubleForKey(key), 3);
    EXPECT_EQ(this->defaults().doubleForKey(other), 2);
}

TYPED_TEST(UserDefaultsContract, ARegisteredValueIsNeverPersisted)
{
    this->defaults().registerDefaults({{key, 1.5}});
    this->defaults().setBool(QStringLiteral("other"), true);
    this->relaunch();
    EXPECT_FALSE(this->defaults().objectForKey(key).isValid());
    EXPECT_TRUE(this->defaults().boolForKey(QStringLiteral("other")));
}

TYPED_TEST(UserDefaultsContract, AStoredValueOfAWrongTypeReadsAsZeroAndNotAsTheRegisteredOne)
{
    this->defaults().registerDefaults({{key, 1.5}});
    for (const QVariant &value :
        {QVariant(QStringLiteral("7")), QVariant(moment), QVariant(QStringList{QStringLiteral("7")})}) {
        this->defaults().setObject(key, value);
        EXPECT_FALSE(this->defaults().boolForKey(key));
        EXPECT_EQ(this->defaults().doubleForKey(key), 0);
        EXPECT_EQ(this->defaults().integerForKey(key), 0);
    }
    this->defaults().setDouble(key, 7);
    EXPECT_EQ(this->defaults().stringForKey(key), std::nullopt);
    EXPECT_EQ(this->defaults().stringArrayForKey(key), std::nullopt);
}

TYPED_TEST(UserDefaultsContract, NumbersAndBooleansReadAsEachOther)
{
    this->defaults().setBool(key, true);
    EXPECT_EQ(this->defaults().doubleForKey(key), 1);
    EXPECT_EQ(this->defaults().integerForKey(key), 1);
    this->defaults().setInteger(key, 224);
    EXPECT_EQ(this->defaults().doubleForKey(key), 224);
    EXPECT_TRUE(this->defaults().boolForKey(key));
    this->defaults().setDouble(key, 2.9);
    EXPECT_EQ(this->defaults().integerForKey(key), 2);
    this->defaults().setDouble(key, -2.9);
    EXPECT_EQ(this->defaults().integerForKey(key), -2);
    this->defaults().setDouble(key, 1e300);
    EXPECT_EQ(this->defaults().integerForKey(key), 0);
}

class DefaultsFile : public testing::Test
{
protected:
    UserDefaults &defaults() { return world.defaults(); }

    JsonWorld world;
};

TEST_F(DefaultsFile, ReadingWritesNothing)
{
    defaults().registerDefaults({{key, 1.5}});
    EXPECT_EQ(defaults().doubleForKey(key), 1.5);
    world.time.advance(1);
    world.relaunch();
    EXPECT_FALSE(QFileInfo::exists(world.folder()));
}

TEST_F(DefaultsFile, ABurstOfWritesReachesTheDiskAsOneSoonAfter)
{
    for (int number = 0; number < 100; ++number)
        defaults().setDouble(key, number);
    EXPECT_EQ(world.time.pendingCount(), 1);
    EXPECT_THAT(world.files(), IsEmpty());
    world.time.advance(0.05);
    EXPECT_THAT(world.files(), ElementsAre(QStringLiteral("defaults.json")));
    EXPECT_EQ(world.text(), "{\n    \"key\": 99\n}\n");
    EXPECT_EQ(world.time.pendingCount(), 0);
}

TEST_F(DefaultsFile, WhatWasWrittenSurvivesAKill)
{
    defaults().setDouble(key, 1);
    world.time.advance(0.05);
    defaults().setDouble(key, 2);
    world.kill();
    EXPECT_EQ(defaults().doubleForKey(key), 1);
}

TEST_F(DefaultsFile, WhatWaitsIsWrittenAtTheEnd)
{
    defaults().setDouble(key, 1);
    world.relaunch();
    EXPECT_EQ(world.text(), "{\n    \"key\": 1\n}\n");
}

TEST_F(DefaultsFile, IsForTheUserAlone)
{
    defaults().setDouble(key, 1);
    world.relaunch();
    constexpr auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther
        | QFile::WriteOther | QFile::ExeOther;
    EXPECT_FALSE(QFileInfo(world.path()).permissions() & others);
    EXPECT_FALSE(QFileInfo(QFileInfo(world.path()).path()).permissions() & others);
}

TEST_F(DefaultsFile, ThatIsDamagedIsSetAsideAndNeverOverwritten)
{
    for (const QByteArray damaged : {"{\"key\": 1", "[1, 2]", "", "\xff\xfe", "null"}) {
        world.write(damaged);
        EXPECT_EQ(defaults().doubleForKey(key), 0);
        defaults().setDouble(key, 2);
        world.relaunch();
        EXPECT_EQ(defaults().doubleForKey(key), 2);
        const QString aside = world.files().filter(QStringLiteral("damaged")).constLast();
        EXPECT_EQ(Files::read(QFileInfo(world.path()).dir().filePath(aside)), damaged);
        world.relaunch();
    }
    EXPECT_EQ(world.files().size(), 6);
}

TEST_F(DefaultsFile, ThatCannotBeReadNorSetAsideIsLeftAlone)
{
    // A folder of that name, with something in it, stands for whatever else may be there.
    const QString inside = world.path() + QStringLiteral("/precious");
    ASSERT_EQ(Files::writeAtomically(inside, "x"), std::nullopt);
    defaults().setDouble(key, 2);
    EXPECT_EQ(defaults().doubleForKey(key), 2);
    world.relaunch();
    const QString aside = world.path() + QStringLiteral(".damaged-1/precious");
    EXPECT_EQ(Files::read(aside), "x");
}

TEST_F(DefaultsFile, ThatCannotBeWrittenLeavesTheValuesInMemory)
{
    // A file where the folder should be refuses all writes.
    ASSERT_EQ(Files::writeAtomically(world.folder() + QStringLiteral("/com.brindle.app"), "x"), std::nullopt);
    defaults().setDouble(key, 2);
    world.time.advance(1);
    EXPECT_EQ(defaults().doubleForKey(key), 2);
    // Once there is room, the next change brings the earlier ones with it.
    QFile::remove(world.folder() + QStringLiteral("/com.brindle.app"));
    defaults().setBool(QStringLiteral("other"), true);
    world.time.advance(1);
    EXPECT_EQ(world.text(), "{\n    \"key\": 2,\n    \"other\": true\n}\n");
}

TEST_F(DefaultsFile, EditedByAPersonKeepsWhatTheProgramDoesNotKnow)
{
    world.write(R"({"collapsedWidth": 300, "later": {"a": [1, null]}, "mixed": ["a", 1], "nothing": null})");
    EXPECT_EQ(defaults().doubleForKey(QStringLiteral("collapsedWidth")), 300);
    EXPECT_EQ(defaults().integerForKey(QStringLiteral("later")), 0);
    EXPECT_EQ(defaults().stringArrayForKey(QStringLiteral("mixed")), std::nullopt);
    EXPECT_FALSE(defaults().boolForKey(QStringLiteral("nothing")));
    defaults().setDouble(key, 1);
    world.relaunch();
    const auto stored = Json::decodeObject(world.text());
    ASSERT_TRUE(stored);
    EXPECT_EQ(
        stored->value(u"later"), QJsonValue(QJsonObject{{QStringLiteral("a"), QJsonArray{1, QJsonValue()}}}));
    EXPECT_TRUE(stored->value(u"nothing").isNull());
}

TEST_F(DefaultsFile, ReachedByALinkIsWrittenWhereTheLinkLeads)
{
    const QString target = world.folder() + QStringLiteral("/elsewhere.json");
    ASSERT_EQ(Files::writeAtomically(target, "{}"), std::nullopt);
    QDir().mkpath(QFileInfo(world.path()).path());
    ASSERT_TRUE(QFile::link(target, world.path()));
    defaults().setDouble(key, 1);
    world.relaunch();
    EXPECT_TRUE(QFileInfo(world.path()).isSymLink());
    EXPECT_EQ(Files::read(target), "{\n    \"key\": 1\n}\n");
}

} // namespace
} // namespace brindle
