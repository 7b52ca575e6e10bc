/// Programs whose threads wait for the plug-in's work in the background.

#include "host/threads/scheduler.h"
#include "support/host.h"

#include <algorithm>
#include <chrono>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

std::vector<Clock::time_point> yields;

void recordedYield() {
    yields.push_back(Clock::now());
    host::Runtime::current().scheduler().yield();
}

/// The time between one call and the next that is exceeded as often as not.
Clock::duration medianBetweenYields() {
    std::vector<Clock::duration> gaps;
    for (std::size_t i = 1; i < yields.size(); ++i)
        gaps.push_back(yields[i] - yields[i - 1]);
    const auto middle = gaps.begin() + static_cast<std::ptrdiff_t>(gaps.size() / 2);
    std::ranges::nth_element(gaps, middle);
    return *middle;
}

class BackgroundWork : public testing::Test {
protected:
    BackgroundWork() {
        yields.clear();
        host.replace(REALservices::YieldToRB, recordedYield);
    }

    /// Runs a program that has an image, `photo`, and its JPEG of 150 x 100 pixels, `small`.
    Host::Outcome run(const std::string& source) {
        return host.run(
            "Dim photo As NSImageZNT = NSImageZNT.imageWithContentsOfPath(\"" PROJECT_SOURCE_DIR
            "/examples/photo.jpg\")\n"
            "Dim small As MemoryBlock = "
            "photo.imageByScalingToSize(150, 100).JPEGRepresentation\n" +
            source);
    }

    Host host;
};

TEST_F(BackgroundWork, OfTwoHundredThreadsIsInFlightAtOnce) {
    const Host::Outcome outcome =
        run("Dim inFlight, most, right As Integer\nDim allAreThere As Boolean\n"
            "For i As Integer = 1 To 200\nDim t As New Thread(AddressOf Load)\nt.Run\nNext\n"
            "allAreThere = True\n"
            "Sub Load()\nWhile Not allAreThere\nApp.YieldToNextThread\nWend\n"
            "inFlight = inFlight + 1\nmost = Max(most, inFlight)\n"
            "Dim image As NSImageZNT = NSImageZNT.imageWithDataMT(small)\n"
            "inFlight = inFlight - 1\n"
            "If image.width = 150 And image.height = 100 Then right = right + 1\n"
            "If inFlight = 0 Then Print most & \" \" & right\nEnd Sub\n");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.output, "200 200\n");
    EXPECT_GE(yields.size(), 200u) << "each call yields at least once";
    EXPECT_LE(medianBetweenYields(), std::chrono::milliseconds(5));
}

TEST_F(BackgroundWork, OfEveryKindGivesEachThreadItsOwnResult) {
    const Host::Outcome outcome = run(
        "For i As Integer = 1 To 24\nDim t As New Thread(AddressOf Encode)\nt.Tag = i\nt.Run\n"
        "Next\nSub Encode(sender As Thread)\nDim i As Integer = sender.Tag\n"
        "Dim image As NSImageZNT = NSImageZNT.imageWithDataMT(small)\n"
        "image = image.imageByScalingToSize(60 + i, 40, 1, False, False)\n"
        "Dim data As MemoryBlock\nSelect Case i Mod 4\n"
        "Case 0\ndata = image.PNGRepresentationMT\nCase 1\ndata = image.TIFFRepresentationMT\n"
        "Case 2\ndata = image.GIFRepresentationMT\nCase Else\ndata = image.BMPRepresentationMT\n"
        "End Select\nDim back As NSImageZNT = NSImageZNT.imageWithDataMT(data)\n"
        "If back.MaximumPixelWidth <> 60 + i Then Print i & \": \" & back.MaximumPixelWidth\n"
        "If NSImageZNT.imageWithDataMT(\"no image\") <> Nil Then Print i & \" gave an image\"\n"
        "End Sub\n");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.output, "");
}

TEST_F(BackgroundWork, LetsTheProgramTellItsProgress) {
    const Host::Outcome outcome = run("Dim isDone As Boolean\nDim ticks As Integer\n"
                                      "Dim clock As New Thread(AddressOf Tick)\nclock.Run\n"
                                      "Dim data As MemoryBlock = photo.PNGRepresentationMT\n"
                                      "isDone = True\nPrint data.Size > 0\nPrint ticks > 3\n"
                                      "Sub Tick()\nWhile Not isDone\nticks = ticks + 1\n"
                                      "App.SleepCurrentThread(1)\nWend\nEnd Sub\n");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.output, "True\nTrue\n");
}

TEST_F(BackgroundWork, IsFinishedBeforeAQuitEndsTheProgram) {
    const Host::Outcome outcome =
        run("For i As Integer = 1 To 8\nDim t As New Thread(AddressOf Encode)\nt.Run\nNext\n"
            "App.YieldToNextThread\nQuit 4\n"
            "Sub Encode()\nDim data As MemoryBlock = photo.JPEGRepresentationMT\nPrint \"no\"\n"
            "End Sub\n");
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.status, 4);
}

} // namespace
