#pragma once

/// Programs that send values into Cocoa and back, and what they print.

#include "tests/plugin/probe/probe_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

using testing::ElementsAre;

using Lines = std::vector<std::string>;

class RoundTrips : public testing::Test {
protected:
    /// The lines that the program prints. It runs in the test's host with these routines in reach:
    ///
    ///     Back(value) As Variant   the value after its way into Cocoa and out again
    ///     Show value               prints the type of the NSNumber in between ("-" for other
    ///                              objects), the VarType of what comes back, and its text
    ///     Listed(array) As String  the VarType and the text of each element of what comes back
    ///     Between value, class     prints whether the object in between is of that Cocoa class
    Lines printed(std::string_view program, std::vector<std::string> arguments = {});

    /// Boots with the options, if the host is not there yet.
    Host& host(const HostOptions& options = {});

private:
    std::optional<Host> host_;
};

/// The same in a host of a version.
class RoundTripsOnEachHost : public RoundTrips, public testing::WithParamInterface<double> {
protected:
    RoundTripsOnEachHost() { host({.version = GetParam()}); }
};
