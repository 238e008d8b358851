// The file has a line for each drawing: path, stamp, end of its job, outcome, cause of a failure, programs;
// UTF-8, with tabs between. Names are compared without case, as the disk does on Windows.
#include "shell/drawing_states.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <vector>

#include "job/placing.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/stand_ins.h"
#include "platform/text.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "writers/number_format.h"

namespace kv {

namespace {

using Steady = std::chrono::steady_clock;

constexpr std::string_view FileHead = "Korvanti drawing states ";
constexpr std::string_view FileVersion = "1";
constexpr std::string_view WrittenWord = "written", FailedWord = "failed", NothingWord = "nothing";
constexpr std::uint64_t LargestFile = std::uint64_t{64} << 20; // bytes
constexpr std::size_t MostRecords = 100'000;                   // the oldest are forgotten
constexpr std::size_t QuickRecords = 2'000;                    // that are written after each run
constexpr std::chrono::seconds BetweenWritings{30};
constexpr std::size_t FieldsAhead = 5;   // of the programs
constexpr std::size_t DateLetters = 10;  // "2026-03-01"
constexpr std::size_t MinuteLetters = 5; // "09:05", a blank after the date

struct Record {
    std::string Path, Stamp, Ended, Cause;
    std::string Outcome; // one of the three words
    std::vector<std::string> Programs;
    unsigned long Order = 0; // in which the jobs ended
};

std::map<std::string, Record> Records;              // by the path's capitals
std::map<std::string, std::string> WriterOfProgram; // of the last one, likewise
bool Touched = false;                               // since the file was written
bool IsForeign = false;                             // the file is of a newer version and is left alone
bool FaultTold = false;                             // of writing
unsigned long Noted = 0, LastOrder = 0;
Steady::time_point LastWritten;

std::string FileOfStates()
{
    return FolderOf(IniPath) + std::string(StatesFile);
}

std::string OneField(std::string_view text)
{
    std::string field = Utf8FromAnsi(text);
    std::ranges::replace_if(
        field, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return field;
}

void TakeRecord(Record record)
{
    const std::string key = UpperCase(record.Path);
    record.Order = ++LastOrder;
    for (const std::string& program : record.Programs)
        WriterOfProgram[UpperCase(program)] = key;
    Records[key] = std::move(record);
}

std::vector<std::string_view> FieldsOf(std::string_view line)
{
    std::vector<std::string_view> fields;
    for (std::size_t at = 0; at <= line.size();) {
        const std::size_t end = std::min(line.find('\t', at), line.size());
        fields.push_back(line.substr(at, end - at));
        at = end + 1;
    }
    return fields;
}

// A line that is none is passed over: the drawing is new again.
bool ReadRecord(std::string_view line, Record& record)
{
    const std::vector<std::string_view> fields = FieldsOf(line);
    if (fields.size() < FieldsAhead || fields[0].empty() ||
        (fields[3] != WrittenWord && fields[3] != FailedWord && fields[3] != NothingWord))
        return false;
    record.Path = PathFromUtf8(fields[0]);
    record.Stamp = fields[1];
    record.Ended = fields[2];
    record.Outcome = fields[3];
    record.Cause = AnsiFromUtf8(fields[4]);
    for (std::size_t i = FieldsAhead; i < fields.size(); ++i)
        record.Programs.push_back(PathFromUtf8(fields[i]));
    return true;
}

std::string LineOfRecord(const Record& record)
{
    std::string line = OneField(record.Path) + '\t' + OneField(record.Stamp) + '\t' + OneField(record.Ended) +
                       '\t' + record.Outcome + '\t' + OneField(record.Cause);
    for (const std::string& program : record.Programs)
        line += '\t' + OneField(program);
    return line + '\n';
}

// In the order in which the jobs ended: of two that wrote one program the last one has it.
std::vector<const Record*> InOrder()
{
    std::vector<const Record*> ordered;
    for (const auto& [key, record] : Records)
        ordered.push_back(&record);
    std::ranges::sort(ordered, {}, &Record::Order);
    return ordered;
}

void ForgetOldest()
{
    if (Records.size() <= MostRecords)
        return;
    const std::vector<const Record*> ordered = InOrder();
    std::vector<std::string> old;
    for (std::size_t i = 0; i < Records.size() - MostRecords; ++i)
        old.push_back(UpperCase(ordered[i]->Path));
    for (const std::string& key : old)
        Records.erase(key);
    std::erase_if(WriterOfProgram, [](const auto& entry) { return !Records.contains(entry.second); });
}

void TellUnread(const std::string& cause)
{
    TellAtOnce(Message::StatesNotRead, {{"file", ShownPath(FileOfStates())}, {"cause", cause}});
}

void ReadRecords(std::string_view text)
{
    for (std::size_t at = std::min(text.find('\n'), text.size()); at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at + 1), text.size());
        std::string_view line = text.substr(at + 1, end - at - 1);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (Record record; ReadRecord(line, record))
            TakeRecord(std::move(record));
        at = end;
    }
}

std::string TimeForPeople(const std::string& ended)
{
    if (ended.size() < DateLetters + 1 + MinuteLetters)
        return ended;
    const std::string minute = ended.substr(DateLetters + 1, MinuteLetters);
    const bool isToday = LocalDateAndTime().substr(0, DateLetters) == ended.substr(0, DateLetters);
    return isToday ? minute : ended.substr(0, DateLetters) + ' ' + minute;
}

// The drawing that wrote a program of the record after it; null: the programs are its own.
const Record* ReplacerOf(const std::string& key, const Record& record)
{
    for (const std::string& program : record.Programs) {
        const auto writer = WriterOfProgram.find(UpperCase(program));
        if (writer == WriterOfProgram.end() || writer->second == key)
            continue;
        const auto other = Records.find(writer->second);
        if (other != Records.end())
            return &other->second;
    }
    return nullptr;
}

// The row names the drawing already.
std::string CauseOfFailure(const std::string& drawing)
{
    const std::string head = ShownPath(drawing) + ": ";
    const std::string& fault = FirstFaultTold();
    return BeginsWith(fault, head) ? fault.substr(head.size()) : fault;
}

std::string TimeOf(const DirectoryEntry& entry)
{
    return WholeText(entry.Year) + '-' + TwoDigits(entry.Month) + '-' + TwoDigits(entry.Day) + ' ' +
           TwoDigits(entry.Hour) + ':' + TwoDigits(entry.Minute) + ':' + TwoDigits(entry.Second);
}

} // namespace

std::string StampOfDrawing(const DirectoryEntry& entry)
{
    return WholeText(entry.Size) + ' ' + TimeOf(entry);
}

DrawingState StateOfDrawing(std::string_view path, std::string_view stamp)
{
    const std::string key = UpperCase(path);
    const auto found = Records.find(key);
    if (found == Records.end())
        return {};
    const Record& record = found->second;
    if (record.Stamp != stamp)
        return {DrawingIs::Changed, "changed"};
    if (record.Outcome == NothingWord)
        return {DrawingIs::WithoutProgram, "no program"};
    if (record.Outcome == FailedWord)
        return {DrawingIs::Failed, record.Cause.empty() ? "failed" : "failed: " + record.Cause};
    const Record* const other = ReplacerOf(key, record);
    if (other == nullptr)
        return {DrawingIs::Written, "written " + TimeForPeople(record.Ended)};
    const bool isBeside = EqualIgnoringCase(FolderOf(other->Path), FolderOf(record.Path));
    return {DrawingIs::Replaced,
            "same program as " + ShownPath(isBeside ? FileNameOf(other->Path) : other->Path)};
}

std::string StampOnDisk(const std::string& drawing)
{
    DirectoryEntry entry;
    return ReadEntryOf(drawing, entry).Is == Presence::There ? StampOfDrawing(entry) : std::string();
}

void NoteStateOfJob(const std::string& drawing, const std::string& before)
{
    Record record;
    record.Path = drawing;
    record.Ended = LocalDateAndTime();
    const bool failed = Run.RunFailed != False;
    record.Outcome = failed ? FailedWord : JobGaveProgram() ? WrittenWord : NothingWord;
    if (failed)
        record.Cause = CauseOfFailure(drawing);
    const std::string now = StampOnDisk(drawing);
    if (now.empty())
        return; // what is not there has no row
    if (before == now)
        record.Stamp = now;
    if (!failed)
        record.Programs = JobPrograms();
    TakeRecord(std::move(record));
    ForgetOldest();
    Touched = true;
    ++Noted;
}

void NoteLateFailures()
{
    for (const std::string& path : Run.FailedDrawings) {
        const auto found = Records.find(UpperCase(path));
        if (found == Records.end() || found->second.Outcome == FailedWord)
            continue;
        found->second.Outcome = FailedWord;
        found->second.Cause = "its files could not be placed";
        Touched = true;
        ++Noted;
    }
}

void ForgetDrawingStates()
{
    Records.clear();
    WriterOfProgram.clear();
    Touched = IsForeign = FaultTold = false;
    ++Noted;
    LastWritten = {};
}

void LoadDrawingStates()
{
    ForgetDrawingStates();
    std::string text;
    const FileAnswer answer = ReadIfThere(FileOfStates(), text, LargestFile);
    if (answer.Is == Presence::CannotTell)
        TellUnread(answer.Why.Cause);
    if (answer.Is != Presence::There)
        return;
    const std::string_view head =
        Trim(std::string_view(text).substr(0, std::min(text.find('\n'), text.size())));
    if (!BeginsWith(head, FileHead)) {
        TellUnread("it holds something else");
        return;
    }
    IsForeign = head.substr(FileHead.size()) != FileVersion;
    if (IsForeign)
        TellUnread("it is of another version");
    else
        ReadRecords(text);
}

void KeepDrawingStates(bool now)
{
    if (!Touched || IsForeign || IniPath.empty())
        return;
    const Steady::time_point time = Steady::now();
    if (!now && Records.size() > QuickRecords && time - LastWritten < BetweenWritings)
        return;
    std::string text = std::string(FileHead) + std::string(FileVersion) + '\n';
    for (const Record* const record : InOrder())
        text += LineOfRecord(*record);
    const FileOutcome outcome = ReplaceFile(FileOfStates(), text);
    LastWritten = time;
    Touched = false;
    if (!outcome.Ok() && !FaultTold)
        TellAtOnce(Message::StatesNotKept, {{"file", ShownPath(FileOfStates())}, {"cause", outcome.Cause}});
    FaultTold = !outcome.Ok();
}

unsigned long StatesNoted()
{
    return Noted;
}

} // namespace kv
