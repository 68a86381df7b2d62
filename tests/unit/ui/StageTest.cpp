#include "ui/Stage.h"

#include <gmock/gmock.h>

namespace brindle {
namespace {

using testing::ElementsAre;

class StageTest : public testing::Test
{
protected:
    QVariant at(int row, int role) const { return stage.data(stage.index(row), role); }
    std::vector<bool> presence() const
    {
        std::vector<bool> result;
        for (int row = 0; row < stage.rowCount(); ++row)
            result.push_back(at(row, Stage::IsPresentRole).toBool());
        return result;
    }
    int serial(int row) const { return at(row, Stage::SerialRole).toInt(); }

    Stage stage;
};

TEST_F(StageTest, ANewSubjectComesWhileTheOldOneLeaves)
{
    stage.setSubject({QStringLiteral("a"), 1});
    stage.setSubject({QStringLiteral("b"), 2});
    EXPECT_THAT(presence(), ElementsAre(false, true));
    EXPECT_EQ(at(0, Stage::ContentRole), 1);
    EXPECT_EQ(at(1, Stage::ContentRole), 2);
}

TEST_F(StageTest, TheSameSubjectIsOnlyRenewed)
{
    stage.setSubject({QStringLiteral("a"), 1});
    stage.setSubject({QStringLiteral("a"), 2});
    EXPECT_THAT(presence(), ElementsAre(true));
    EXPECT_EQ(at(0, Stage::ContentRole), 2);
}

TEST_F(StageTest, WithoutAKeyNothingIsPresent)
{
    stage.setSubject({QStringLiteral("a"), 1});
    stage.setSubject({});
    EXPECT_THAT(presence(), ElementsAre(false));
}

TEST_F(StageTest, WhoComesBackWhileLeavingComesAnew)
{
    stage.setSubject({QStringLiteral("a"), 1});
    stage.setSubject({});
    stage.setSubject({QStringLiteral("a"), 1});
    EXPECT_THAT(presence(), ElementsAre(false, true));
    EXPECT_NE(serial(0), serial(1));
}

TEST_F(StageTest, OnlyWhoLeavesCanBeTakenAway)
{
    stage.setSubject({QStringLiteral("a"), 1});
    stage.setSubject({QStringLiteral("b"), 2});
    const int leaving = serial(0);
    stage.leave(serial(1));
    EXPECT_EQ(stage.rowCount(), 2);
    stage.leave(leaving);
    EXPECT_THAT(presence(), ElementsAre(true));
    stage.leave(leaving);
    EXPECT_EQ(stage.rowCount(), 1);
}

TEST_F(StageTest, WhatChangesBeforeItIsMadeWasNeverThere)
{
    stage.classBegin();
    stage.setSubject({QStringLiteral("a"), 1});
    stage.setSubject({QStringLiteral("b"), 2});
    stage.componentComplete();
    EXPECT_THAT(presence(), ElementsAre(true));
    EXPECT_EQ(at(0, Stage::ContentRole), 2);
}

TEST_F(StageTest, WhatIsThereFromTheStartMakesNoEntrance)
{
    stage.classBegin();
    stage.setSubject({QStringLiteral("a"), 1});
    stage.componentComplete();
    EXPECT_FALSE(at(0, Stage::MakesEntranceRole).toBool());
    stage.setSubject({QStringLiteral("b"), 2});
    EXPECT_TRUE(at(1, Stage::MakesEntranceRole).toBool());
}

} // namespace
} // namespace brindle
