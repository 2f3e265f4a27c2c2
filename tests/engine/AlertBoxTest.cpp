// The alert boxes: what they ask of the alert service and what they make of its answer.
#include "AlertBox.h"

#include "Alerts.h"
#include "Bundle.h"
#include "Effects.h"
#include "Fixture.h"

#include <gmock/gmock.h>

namespace {

using doubles::EffectsOf;
using doubles::Lines;

class AlertBoxTest : public doubles::Fixture {
protected:
    static bool Ask() {
        bool answer = false;
        EffectsOf([&] { answer = engine::logQuestionBox("Skovra", "Full screen?"); });
        return answer;
    }
};

TEST_F(AlertBoxTest, NoticeHasAStopIconAndTheDefaultButtonOnly) {
    EXPECT_EQ(
        EffectsOf([] { engine::logMessageBox("Skovra", "Hello."); }),
        Lines({
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "Skovra", kCFStringEncodingMacRoman))",
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "Hello.", kCFStringEncodingMacRoman))",
            R"(CreateStandardAlert(kAlertStopAlert, "Skovra", "Hello.", null))",
            R"(RunStandardAlert(alert, null))",
            R"(CFRelease("Skovra"))",
            R"(CFRelease("Hello."))",
        }));
}

TEST_F(AlertBoxTest, QuestionHasAStopIconAndYesForReturnAndNoForEscape) {
    // Of the record: version, movable, help button, default, cancel and other text, default
    // button, cancel button, position, flags.
    EXPECT_EQ(
        EffectsOf([] { engine::logQuestionBox("Skovra", "Full screen?"); }),
        Lines({
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "Yes", kCFStringEncodingMacRoman))",
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "No", kCFStringEncodingMacRoman))",
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "Skovra", kCFStringEncodingMacRoman))",
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "Full screen?", kCFStringEncodingMacRoman))",
            R"(CreateStandardAlert(kAlertStopAlert, "Skovra", "Full screen?", {1, true, false, "Yes", "No", null, 1, 2, 0, 0}))",
            R"(RunStandardAlert(alert, null))",
            R"(CFRelease("Skovra"))",
            R"(CFRelease("Full screen?"))",
            R"(CFRelease("Yes"))",
            R"(CFRelease("No"))",
        }));
}

TEST_F(AlertBoxTest, QuestionIsTrueForYesAndFalseForNoOrAnyOtherItem) {
    for (const int item : {1, 2, -1, 0, 3, 257}) {
        doubles::alerts.answer = static_cast<DialogItemIndex>(item);
        EXPECT_EQ(Ask(), item == 1) << item;
    }
}

TEST_F(AlertBoxTest, QuestionThatCannotBeShownIsAnsweredFalse) {
    doubles::alerts.canBeShown = false;
    EXPECT_FALSE(Ask());
}

TEST_F(AlertBoxTest, BoxesThatCannotBeShownReleaseTheirTexts) {
    doubles::alerts.canBeShown = false;
    EffectsOf([] {
        engine::logMessageBox("Skovra", "Hello.");
        engine::logQuestionBox("Skovra", "Full screen?");
    });
    EXPECT_EQ(doubles::UnreleasedObjects(), 0U);
}

TEST_F(AlertBoxTest, TextsAreHandedOverInTheirBytes) {
    EXPECT_THAT(EffectsOf([] { engine::logMessageBox("\"Q\"", "kj\xBFre"); }),
                testing::HasSubstr(R"(CreateStandardAlert(kAlertStopAlert, "\"Q\"", "kj\xBFre")"));
}

} // namespace
