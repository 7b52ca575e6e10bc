/// Threads that meet in a plug-in's members, which let others run while they wait.

#include "host/registered_class.h"
#include "support/host.h"

#import <Foundation/Foundation.h>

#include <gmock/gmock.h>

#include <thread>

namespace {

using REALtables::shared_method;
using testing::StartsWith;

void yieldTimes(REALword count) {
    for (REALword i = 0; i < count; ++i)
        service(REALservices::YieldToRB)();
}

REALword waitsLeft = 0;
void wait(REALword count) {
    yieldTimes(count);
    ++waitsLeft;
}

/// A plug-in's exception is pending until its member returns.
void raiseAndWait(REALword count) {
    REALobjectStruct* const exception = service(REALservices::NewInstance)("IOException");
    service(REALservices::RaiseException)(exception);
    service(REALservices::UnlockObject)(exception);
    yieldTimes(count);
}

/// Whether an object lives exactly as long as the pool around the wait.
bool waitWithPool(REALword count) {
    NSObject* const object = [[NSObject alloc] init];
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    [[object retain] autorelease];
    yieldTimes(count);
    const bool wasKept = [object retainCount] == 2;
    [pool release];
    const bool wasReleased = [object retainCount] == 1;
    [object release];
    return wasKept && wasReleased;
}

/// Whether what is thrown after the wait arrives in the handler around it.
bool throwAfterWait(REALword count) {
    NSString* const name = [NSString stringWithFormat:@"after %d", static_cast<int>(count)];
    @try {
        yieldTimes(count);
        [NSException raise:name format:@"reason"];
    } @catch (NSException* thrown) {
        yieldTimes(count);
        return [[thrown name] isEqualToString:name];
    }
    return false;
}

void throwForeign() {
    yieldTimes(2);
    [NSException raise:NSRangeException format:@"too far"];
}

void callFromAnotherThread() {
    auto* const yield = service(REALservices::YieldToRB);
    std::thread([yield] { yield(); }).join();
}

class PluginThreads : public testing::Test {
protected:
    PluginThreads() {
        waitsLeft = 0;
        tables.registerAs();
    }

    /// Runs `body` in `count` threads whose Tags are their numbers from 1, beside `main`. They all
    /// begin with their turns behind `main`'s first, in this order.
    Host::Outcome run(int count, const std::string& body, const std::string& main = "") {
        return host.run("Dim allAreThere As Boolean\nFor i As Integer = 1 To " +
                        std::to_string(count) +
                        "\nDim t As New Thread(AddressOf Work)\nt.Tag = i\nt.Run\nNext\n"
                        "App.YieldToNextThread\nallAreThere = True\n" +
                        main +
                        "\nSub Work(sender As Thread)\nDim n As Integer = sender.Tag\n"
                        "While Not allAreThere\nApp.YieldToNextThread\nWend\n" +
                        body + "\nEnd Sub\n");
    }

    Host host{{.bare = true}};
    ClassTables tables{
        {.name = "Waiting"},
        {},
        {},
        {shared_method("Wait(count As Integer)", wait),
         shared_method("RaiseAndWait(count As Integer)", raiseAndWait),
         shared_method("WaitWithPool(count As Integer) As Boolean", waitWithPool),
         shared_method("ThrowAfterWait(count As Integer) As Boolean", throwAfterWait),
         shared_method("ThrowForeign()", throwForeign),
         shared_method("CallFromAnotherThread()", callFromAnotherThread)}};
};

TEST_F(PluginThreads, GoOnWhileAMemberWaits) {
    EXPECT_EQ(run(1, "For i As Integer = 1 To 3\nPrint i\nApp.YieldToNextThread\nNext",
                  "Waiting.Wait(2)\nPrint \"waited\"\n")
                  .output,
              "1\n2\nwaited\n3\n");
    EXPECT_EQ(host.runtime().yields, 2u);
}

TEST_F(PluginThreads, MayAllWaitAtOnce) {
    EXPECT_EQ(run(50, "Waiting.Wait(100 - n)\nPrint n").output.substr(0, 9), "50\n49\n48\n");
    EXPECT_EQ(waitsLeft, 50);
}

TEST_F(PluginThreads, HaveTheirOwnPendingExceptions) {
    EXPECT_EQ(run(2, "If n = 1 Then\nTry\nWaiting.RaiseAndWait(3)\nPrint \"no\"\n"
                     "Catch e As IOException\nPrint \"caught\"\nEnd Try\nElse\nTry\n"
                     "Waiting.Wait(1)\nPrint \"fine\"\nCatch\nPrint \"no\"\nEnd Try\nEnd If")
                  .output,
              "fine\ncaught\n");
}

TEST_F(PluginThreads, HaveTheirOwnPools) {
    // The first thread's pool is made first and released first.
    EXPECT_EQ(run(10, "Print Waiting.WaitWithPool(n)").output,
              "True\nTrue\nTrue\nTrue\nTrue\nTrue\nTrue\nTrue\nTrue\nTrue\n");
}

TEST_F(PluginThreads, HaveTheirOwnHandlersOfCocoasExceptions) {
    EXPECT_EQ(run(5, "Print Waiting.ThrowAfterWait(10 - n)").output,
              "True\nTrue\nTrue\nTrue\nTrue\n");
}

TEST_F(PluginThreads, EndTheProgramWithCocoasExceptionsThatNobodyCatches) {
    const Host::Outcome outcome = run(3, "If n = 2 Then Waiting.ThrowForeign()\nWaiting.Wait(5)");
    EXPECT_EQ(outcome.error, "program.bas:15: NSRangeException: too far\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(waitsLeft, 2);
}

TEST_F(PluginThreads, LeaveTheirMembersBeforeAQuitEndsThem) {
    const Host::Outcome outcome =
        run(3, "Waiting.Wait(20)\nPrint \"no\"", "App.YieldToNextThread\nQuit 5\n");
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.status, 5);
    EXPECT_EQ(waitsLeft, 3);
}

TEST_F(PluginThreads, LeaveTheirMembersBeforeTheyAreKilled) {
    EXPECT_EQ(host.run("Dim t As New Thread(AddressOf Work)\nt.Run\nApp.YieldToNextThread\nt.Kill\n"
                       "App.YieldToNextThread\nPrint t.State = Thread.NotRunning\n"
                       "Sub Work()\nWaiting.Wait(5)\nPrint \"no\"\nEnd Sub\n")
                  .output,
              "False\n");
    EXPECT_EQ(waitsLeft, 1);
}

TEST_F(PluginThreads, AreTheOnlyOnesThatMayCallTheHost) {
    EXPECT_EQ(run(1, "Waiting.CallFromAnotherThread()\nPrint 1").output, "1\n");
    const std::vector<std::string> reports = host.takeReports();
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_THAT(reports.front(), StartsWith("REALYieldToRB was called on another thread"));
}

TEST_F(PluginThreads, ArePossibleTwoHundredAtOnce) {
    EXPECT_EQ(run(200, "Waiting.Wait(3)").error, "");
    EXPECT_EQ(waitsLeft, 200);
    EXPECT_EQ(host.runtime().yields, 600u);
}

} // namespace
