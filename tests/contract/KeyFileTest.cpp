#include "platform/linux/files/KeyFile.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

using namespace Qt::StringLiterals;

TEST(KeyFile, HasTheKeysOfOneGroup)
{
    const auto keys = KeyFile::group("a=0\n[One]\na=1\n[Two]\na=2\n[One]\nb=3\n", u"One"_s);
    EXPECT_EQ(keys, (QHash<QString, QString>{{u"a"_s, u"1"_s}, {u"b"_s, u"3"_s}}));
    EXPECT_TRUE(KeyFile::group("[One]\na=1\n", u"On"_s).isEmpty());
    EXPECT_TRUE(KeyFile::group("", u"One"_s).isEmpty());
}

TEST(KeyFile, TrimsKeysAndValuesAndPassesOverWhatIsNeither)
{
    const auto keys = KeyFile::group("\xef\xbf\xbd\n[One]\r\n a = b=c \r\n#d=e\nnothing\n", u"One"_s);
    EXPECT_EQ(keys, (QHash<QString, QString>{{u"a"_s, u"b=c"_s}}));
}

TEST(KeyFile, EscapesStandForWhatCannotBeWritten)
{
    EXPECT_EQ(KeyFile::unescaped(u"a\\sb\\nc\\td\\re\\\\f"_s), u"a b\nc\td\re\\f"_s);
    EXPECT_EQ(KeyFile::unescaped(u"\\x\\"_s), u"\\x\\"_s) << "what is no escape stands for itself";
    EXPECT_EQ(KeyFile::unescaped(KeyFile::escaped(u"C:\\new"_s)), u"C:\\new"_s);
}

} // namespace
} // namespace brindle
