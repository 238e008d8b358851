// Outside programs, by the front end's hooks, and their command lines.
// Without hooks no program starts: the handle is 0, and a handle that nobody knows reads as ended
// with 0, so that nobody waits for ever.
#include "platform/processes.h"

#include "platform/text.h"

namespace kv {

ProcessHooks Processes;

namespace {

// The interpreter of batch files takes a line apart by rules of its own.
constexpr std::string_view InterpreterSigns = "&|<>^()!,;=@ \t";
constexpr std::string_view NeverInBatch = "\"%\r\n";

bool IsBatchFile(std::string_view program)
{
    const std::string upper = UpperCase(program);
    return upper.ends_with(".BAT") || upper.ends_with(".CMD");
}

// Backslashes count double in front of a quote, and only there.
std::string Quoted(std::string_view word)
{
    std::string quoted = "\"";
    std::size_t backslashes = 0;
    for (const char c : word) {
        if (c == '"')
            quoted.append(backslashes + 1, '\\');
        backslashes = c == '\\' ? backslashes + 1 : 0;
        quoted += c;
    }
    return quoted.append(backslashes, '\\') + '"';
}

} // namespace

ProgramCall SplitCommand(std::string_view line)
{
    ProgramCall words;
    bool inWord = false, quoted = false;
    for (const char c : line) {
        if (!quoted && (c == ' ' || c == '\t')) {
            inWord = false;
            continue;
        }
        if (!inWord)
            words.emplace_back(); // two quotes alone are a word too, an empty one
        inWord = true;
        if (c == '"')
            quoted = !quoted;
        else
            words.back() += c;
    }
    return words;
}

std::string CommandText(const ProgramCall& command)
{
    std::string text;
    for (const std::string& word : command) {
        const bool plain = !word.empty() && word.find_first_of(" \t") == std::string::npos;
        text += (text.empty() ? "" : " ") + (plain ? word : '"' + word + '"');
    }
    return text;
}

std::string WindowsCommandLine(const ProgramCall& command)
{
    const bool batch = !command.empty() && IsBatchFile(command[0]);
    std::string line;
    for (std::size_t i = 0; i < command.size(); ++i) {
        const std::string& word = command[i];
        if (batch && i > 0 && word.find_first_of(NeverInBatch) != std::string::npos)
            return {};
        const std::string_view signs = batch && i > 0 ? InterpreterSigns : std::string_view(" \t\"");
        const bool plain = !word.empty() && word.find_first_of(signs) == std::string::npos;
        line += (i > 0 ? " " : "") + (plain ? word : Quoted(word));
    }
    return line;
}

Long StartProcess(const ProgramCall& command)
{
    return Processes.Start != nullptr ? Processes.Start(command) : 0;
}

Long StartLine(std::string_view line)
{
    return StartProcess(SplitCommand(line));
}

Long ProcessExitCode(Long handle)
{
    return Processes.ExitCode != nullptr ? Processes.ExitCode(handle) : 0;
}

void ForgetProcess(Long handle)
{
    if (Processes.Forget != nullptr)
        Processes.Forget(handle);
}

} // namespace kv
