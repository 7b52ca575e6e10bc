/// NSProcessInfo whatever the arguments and the environment hold. Where one of them is no text in
/// the locale's encoding, Base takes in none of them, and ends the process when it is asked for
/// any: as NSLog does, for the process's name.

#import <Foundation/Foundation.h>

#include <cerrno>
#include <fstream>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

/// The text with everything but ASCII replaced, unless Base can read it.
std::string readable(std::string text) {
    if ([NSString stringWithCString:text.c_str() encoding:[NSString defaultCStringEncoding]])
        return text;
    for (char& unit : text)
        if (static_cast<unsigned char>(unit) > 0x7F) unit = '?';
    return text;
}

std::vector<std::string> commandLine() {
    std::vector<std::string> words;
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    for (std::string word; std::getline(file, word, '\0');)
        words.push_back(readable(word));
    if (words.empty()) words.push_back(readable(program_invocation_name));
    return words;
}

std::vector<std::string> environmentVariables() {
    std::vector<std::string> variables;
    for (char** variable = environ; variable && *variable; ++variable)
        variables.push_back(readable(*variable));
    return variables;
}

/// As C has them, with a null behind the last.
std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace

@implementation NSProcessInfo (AnyText)

/// In place of Base's own, which is where it takes them in.
+ (void)initialize {
    if (self != [NSProcessInfo class]) return;
    std::vector<std::string> arguments = commandLine();
    std::vector<std::string> variables = environmentVariables();
    [self initializeWithArguments:pointersTo(arguments).data()
                            count:static_cast<int>(arguments.size())
                      environment:pointersTo(variables).data()];
}

@end
