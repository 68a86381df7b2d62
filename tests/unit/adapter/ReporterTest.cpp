#include "adapter/linux/Reporter.h"

#include "adapter/linux/LineOutput.h"
#include "foundation/ManualScheduler.h"

#include <QJsonDocument>

#include <gmock/gmock.h>

namespace brindle::adapter {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

/// Takes lines, or refuses them while it is busy.
class ScriptedOutput : public LineOutput
{
public:
    bool write(const QByteArrayList &line) override
    {
        if (isBusy)
            return false;
        const auto object = QJsonDocument::fromJson(line.join()).object();
        const QString title = object.value(u"payload").toObject().value(u"title").toString();
        lines.push_back((object.value(u"diff").toBool() ? u"diff "_s : u"full "_s) + title);
        return true;
    }

    bool isBusy = false;
    std::vector<QString> lines;
};

class ReporterTest : public testing::Test
{
protected:
    void become(const QString &title)
    {
        present.player = 1;
        present.fields.insert(u"title"_s, title);
        reporter.change();
    }
    void begin()
    {
        reporter.begin(0.25);
        reporter.beComplete();
        output.lines.clear();
    }

    ManualScheduler time;
    ScriptedOutput output;
    Payload present;
    Reporter reporter{time, 0.08, output, [this] { return present; }};
};

TEST_F(ReporterTest, TheFirstLineComesAsSoonAsAllIsKnown)
{
    reporter.begin(0.25);
    become(u"Song"_s);
    time.advance(0.01);
    EXPECT_THAT(output.lines, IsEmpty());
    reporter.beComplete();
    EXPECT_THAT(output.lines, ElementsAre(u"full Song"));
}

TEST_F(ReporterTest, TheFirstLineDoesNotWaitForEver)
{
    reporter.begin(0.25);
    time.advance(0.25);
    EXPECT_THAT(output.lines, ElementsAre(u"full "));
}

TEST_F(ReporterTest, BeingCompleteLaterMakesNoLine)
{
    begin();
    become(u"Song"_s);
    reporter.beComplete();
    EXPECT_THAT(output.lines, IsEmpty());
}

TEST_F(ReporterTest, AChangeIsToldWhenItsWindowEnds)
{
    begin();
    become(u"Song"_s);
    time.advance(0.079);
    EXPECT_THAT(output.lines, IsEmpty());
    time.advance(0.001);
    EXPECT_THAT(output.lines, ElementsAre(u"full Song"));
}

TEST_F(ReporterTest, ChangesWithinAWindowAreOneLineAndDoNotLengthenIt)
{
    begin();
    become(u"half-filled"_s);
    time.advance(0.05);
    become(u"Song"_s);
    time.advance(0.03);
    EXPECT_THAT(output.lines, ElementsAre(u"full Song"));
    time.advance(10);
    EXPECT_EQ(output.lines.size(), 1U);
}

TEST_F(ReporterTest, HoweverFastAPlayerChangesItsLinesKeepTheirDistance)
{
    begin();
    for (int count = 0; count < 1000; ++count) {
        become(QString::number(count));
        time.advance(0.001);
    }
    EXPECT_EQ(output.lines.size(), 12U);
}

TEST_F(ReporterTest, ChangesThatTakeEachOtherBackAreNotTold)
{
    begin();
    become(u"Song"_s);
    time.advance(1);
    output.lines.clear();
    become(u"Other"_s);
    become(u"Song"_s);
    time.advance(1);
    EXPECT_THAT(output.lines, IsEmpty());
}

TEST_F(ReporterTest, WithoutAWindowEachTurnIsToldAtOnce)
{
    Reporter prompt{time, 0, output, [this] { return present; }};
    prompt.begin(0.25);
    prompt.beComplete();
    output.lines.clear();
    become(u"Song"_s);
    prompt.change();
    time.advance(0);
    EXPECT_THAT(output.lines, ElementsAre(u"full Song"));
}

TEST_F(ReporterTest, ASlowReaderGetsWhatHoldsWhenItReadsOn)
{
    begin();
    become(u"One"_s);
    time.advance(0.08);
    output.lines.clear();
    output.isBusy = true;
    for (const auto &title : {u"Two"_s, u"Three"_s, u"Four"_s}) {
        become(title);
        time.advance(0.08);
    }
    EXPECT_THAT(output.lines, IsEmpty());
    output.isBusy = false;
    reporter.outputIsFree();
    EXPECT_THAT(output.lines, ElementsAre(u"diff Four"));
}

TEST_F(ReporterTest, WhatARefusedLineToldIsNotTakenAsTold)
{
    begin();
    output.isBusy = true;
    become(u"Song"_s);
    time.advance(0.08);
    EXPECT_EQ(reporter.lastTold()->player, 0U);
    output.isBusy = false;
    present.fields.insert(u"artist"_s, u"Ann"_s);
    reporter.outputIsFree();
    EXPECT_THAT(output.lines, ElementsAre(u"full Song"));
    EXPECT_EQ(reporter.lastTold()->player, 1U);
}

TEST_F(ReporterTest, AnOutputThatIsFreeGetsNothingThatItIsNotOwed)
{
    begin();
    become(u"Song"_s);
    reporter.outputIsFree();
    EXPECT_THAT(output.lines, IsEmpty());
}

TEST_F(ReporterTest, NothingWakesWhileNothingChanges)
{
    begin();
    EXPECT_EQ(time.pendingCount(), 0);
}

} // namespace
} // namespace brindle::adapter
