#include "tests/plugin/values/round_trips.h"

#include <sstream>
#include <utility>

namespace {

/// Behind the program, whose lines keep their numbers.
constexpr std::string_view routines = R"(
Function Back(value As Variant) As Variant
  Return ValueProbe.RoundTrip(value)
End Function
Sub Show(value As Variant)
  Dim type As String = ValueProbe.ObjCTypeOf(value)
  If type = "" Then type = "-"
  Dim result As Variant = Back(value)
  Print type & " " & VarType(result) & " " & result
End Sub
Function Listed(list As Variant) As String
  Dim result() As Variant = Back(list)
  Dim parts() As String
  For Each element As Variant In result
    parts.Append VarType(element) & " " & element
  Next
  Return "[" & Join(parts, ", ") & "]"
End Function
Sub Between(value As Variant, className As String)
  Print ValueProbe.IsKindOf(value, className)
End Sub
)";

Lines linesOf(const std::string& text) {
    std::istringstream stream(text);
    Lines lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

} // namespace

Host& RoundTrips::host(const HostOptions& options) {
    if (!host_) host_.emplace(with_probe(options));
    return *host_;
}

Lines RoundTrips::printed(std::string_view program, std::vector<std::string> arguments) {
    const Host::Outcome outcome =
        host().run(std::string(program).append(routines), std::move(arguments));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.error, "");
    return linesOf(outcome.output);
}
