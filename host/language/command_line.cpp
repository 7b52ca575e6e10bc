#include "host/language/command_line.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace host::language {
namespace {

class Reader {
public:
    Reader(std::span<const std::string> arguments, std::string& error)
        : arguments_(arguments)
        , error_(error) {}

    std::optional<CommandLine> read() {
        while (position_ < arguments_.size() && !isComplete_)
            if (!readArgument()) return std::nullopt;
        if (isHelp_) return CommandLine{};
        if (!hasCommand_) return fail("no command was given");
        if (line_.command == CommandLine::Command::Run && line_.file.empty())
            return fail("run needs the file of a program");
        return line_;
    }

private:
    std::nullopt_t fail(const std::string& message) {
        error_ = message;
        return std::nullopt;
    }

    bool readArgument() {
        const std::string& argument = arguments_[position_++];
        if (argument == "--help" || argument == "-h") {
            isHelp_ = isComplete_ = true;
            return true;
        }
        if (argument.starts_with("-") && argument.size() > 1) return readOption(argument);
        return hasCommand_ ? readOperand(argument) : readCommand(argument);
    }

    bool readCommand(const std::string& argument) {
        if (argument == "run")
            line_.command = CommandLine::Command::Run;
        else if (argument == "list")
            line_.command = CommandLine::Command::List;
        else {
            fail("there is no command called " + argument);
            return false;
        }
        hasCommand_ = true;
        return true;
    }

    bool readOperand(const std::string& argument) {
        if (line_.command == CommandLine::Command::Run) {
            line_.file = argument;
            line_.arguments.assign(arguments_.begin() + static_cast<std::ptrdiff_t>(position_),
                                   arguments_.end());
            isComplete_ = true;
            return true;
        }
        if (!line_.className.empty()) {
            fail("list takes one class, but " + argument + " is a second");
            return false;
        }
        line_.className = argument;
        return true;
    }

    bool readOption(const std::string& option) {
        Options& options = line_.options;
        if (option == "--console") return options.console = true;
        if (option == "--without-base") return options.withoutBase = true;
        const bool known = option == "--plugin" || option == "--host-version" ||
                           option == "--without-service" || option == "--system-version";
        if (!known) {
            fail("there is no option called " + option);
            return false;
        }
        if (position_ == arguments_.size()) {
            fail(option + " needs a value");
            return false;
        }
        const std::string& value = arguments_[position_++];
        if (option == "--plugin") line_.plugins.push_back(value);
        if (option == "--without-service") options.without.push_back(value);
        if (option == "--host-version") return readHostVersion(value);
        if (option == "--system-version") return readSystemVersion(value);
        return true;
    }

    bool readHostVersion(const std::string& value) {
        double& version = line_.options.version;
        const char* const end = value.data() + value.size();
        const auto [last, problem] = std::from_chars(value.data(), end, version);
        if (problem == std::errc{} && last == end && std::isfinite(version) && version >= 0)
            return true;
        fail("--host-version needs a number such as 2013.03, but " + value + " is none");
        return false;
    }

    bool readSystemVersion(const std::string& value) {
        const auto isAllowed = [](char c) { return (c >= '0' && c <= '9') || c == '.'; };
        const bool fits = !value.empty() && std::ranges::all_of(value, isAllowed) &&
                          value.front() != '.' && value.back() != '.' &&
                          value.find("..") == std::string::npos &&
                          std::ranges::count(value, '.') <= 2 && value.size() <= 11;
        if (fits) {
            line_.options.systemVersion = value;
            return true;
        }
        fail("--system-version needs a version such as 10.6.8, but " + value + " is none");
        return false;
    }

    std::span<const std::string> arguments_;
    std::string& error_;
    CommandLine line_;
    std::size_t position_ = 0;
    bool hasCommand_ = false;
    bool isHelp_ = false;
    bool isComplete_ = false;
};

} // namespace

std::optional<CommandLine> parseCommandLine(std::span<const std::string> arguments,
                                            std::string& error) {
    return Reader(arguments, error).read();
}

std::string_view helpText() {
    return R"(rbhost runs programs of the host's language with plug-ins.

    rbhost [OPTION...] run FILE.bas [ARGUMENT...]   runs a program
    rbhost [OPTION...] list [CLASS]                 lists the plug-ins' classes and their members

    --plugin FILE            loads this plug-in in place of the built ones; may be repeated
    --host-version N         the host's version, such as 2009.05; 2013.9 if not given
    --console                a console application instead of one on the desktop
    --without-base           leaves out the built base part
    --without-service NAME   the host does not offer this service; may be repeated
    --system-version N       the system version that programs see, such as 10.6.8
    --help                   shows this

Exit status: 0 or what the program's Quit says; 1 when it ends by an exception or its output cannot be
written; 2 when the program or the command line is not understood, or a file cannot be loaded; 3 when
a plug-in broke a rule of the host or kept a reference.
)";
}

} // namespace host::language
