/// The rbhost command.

#include "host/language/class_listing.h"
#include "host/language/command_line.h"
#include "host/language/program.h"
#include "host/objects/runtime.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace host;
using namespace host::language;

enum Status : int { Success = 0, Failure = 1, WrongUse = 2, BrokenRule = 3 };

void write(std::FILE* file, std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), file);
    std::fflush(file);
}

void complain(const std::string& message) { write(stderr, "rbhost: " + message + "\n"); }

std::vector<std::string> builtPlugins(const Options& options) {
    std::error_code error;
    const auto executable = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::filesystem::path folder = executable.parent_path() / "plugins";
    std::vector<std::string> files;
    if (!options.withoutBase) files.push_back(folder / "Base.so");
    files.push_back(folder / "NSImage.so");
    return files;
}

bool loadPlugins(Runtime& runtime, const CommandLine& line) {
    const std::vector<std::string> files =
        line.plugins.empty() ? builtPlugins(line.options) : line.plugins;
    for (const std::string& file : files) {
        if (const std::optional<std::string> error = runtime.loadPlugin(file)) {
            complain(*error);
            return false;
        }
    }
    return true;
}

std::optional<std::string> readFile(const std::string& path) {
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        complain(path + " is a folder");
        return std::nullopt;
    }
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!file.is_open() || file.bad()) {
        complain("cannot read " + path + ": " + std::strerror(errno));
        return std::nullopt;
    }
    return text;
}

int runFile(const CommandLine& line, const std::string& source) {
    RunOptions options;
    options.arguments = line.arguments;
    options.output = [](std::string_view text) { write(stdout, text); };
    options.errorOutput = [](std::string_view text) { write(stderr, text); };
    const RunResult result = runProgram(source, options);
    if (result.error) write(stderr, result.error->text(line.file) + "\n");
    return result.status;
}

int list(const Runtime& runtime, const std::string& className) {
    if (!className.empty()) {
        const Class* const type = runtime.findClass(className);
        if (type)
            write(stdout, describe(*type));
        else
            complain("there is no class called " + className);
        return type ? Success : WrongUse;
    }
    bool isFirst = true;
    for (const auto& type : runtime.classes()) {
        if (type->plugin.empty()) continue;
        write(stdout, (isFirst ? "" : "\n") + describe(*type));
        isFirst = false;
    }
    return Success;
}

int work(const CommandLine& line) {
    // Read first: a missing file needs no plug-in to be noticed.
    std::optional<std::string> source;
    if (line.command == CommandLine::Command::Run) {
        source = readFile(line.file);
        if (!source) return WrongUse;
    }
    std::unique_ptr<Runtime> runtime;
    try {
        runtime = std::make_unique<Runtime>(line.options);
    } catch (const std::invalid_argument& error) {
        complain(error.what());
        return WrongUse;
    }
    if (!loadPlugins(*runtime, line)) return WrongUse;
    int status = source ? runFile(line, *source) : list(*runtime, line.className);
    runtime->drainPool();
    for (const std::string& sentence : runtime->report()) {
        complain(sentence);
        if (status == Success) status = BrokenRule;
    }
    return status;
}

int answer(const std::vector<std::string>& arguments) {
    std::string error;
    const std::optional<CommandLine> line = parseCommandLine(arguments, error);
    if (!line) {
        complain(error + "; rbhost --help tells how it is used");
        return WrongUse;
    }
    if (line->command == CommandLine::Command::Help) {
        write(stdout, helpText());
        return Success;
    }
    return work(*line);
}

} // namespace

int main(int count, char** values) {
    const int status = answer({values + (count > 0 ? 1 : 0), values + count});
    if (!std::ferror(stdout)) return status;
    complain("the output could not be written");
    return status == Success ? Failure : status;
}
