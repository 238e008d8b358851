// Compares by the kind of a file: an index by its records, a cut list by its rows, all others by their bytes.
#include "faults/judge.h"

#include <algorithm>
#include <cstring>

#include "faults/own_readers.h"

namespace fault_test {

namespace {

bool IsIndex(const std::string& path)
{
    return path.ends_with("INDICE.PRG");
}

bool IsCutList(const std::string& path)
{
    return path.ends_with(".PTS");
}

// It holds times, so that two runs never leave the same one, and it may be deleted at any time: whole or not
// at all is what it owes.
bool IsStates(const std::string& path)
{
    return path.ends_with("/KVSTATES.TXT");
}

// A file that processes lock stays where it is for ever: one that were taken away could be locked twice.
bool IsLock(const std::string& path)
{
    return LastName(path).starts_with(".") && path.ends_with(".lock");
}

// Each merge may move the blank lines of the notes.
bool IsNotes(const std::string& path)
{
    return path.find("/NOTE/") != std::string::npos;
}

// What a program that watches does with its trigger files is looked at elsewhere.
bool IsTrigger(const std::string& path)
{
    for (const char* const name :
         {"IN/Temp.DXF", "IN/Temp.OLD", "IN/BATCH.LST", "IN/BATCH.RUN", "IN/BATCH.OLD", "IN/PROC.LST"}) {
        if (path == name)
            return true;
    }
    return false;
}

std::vector<const Tree*> TreesOf(const Reference& reference)
{
    std::vector<const Tree*> trees = {&reference.Before, &reference.Once};
    for (const Tree& tree : reference.Others)
        trees.push_back(&tree);
    return trees;
}

bool IsKnown(const Reference& reference, const std::string& path)
{
    const std::vector<const Tree*> trees = TreesOf(reference);
    return std::any_of(trees.begin(), trees.end(), [&](const Tree* tree) { return tree->contains(path); });
}

bool MayHold(const Reference& reference, const std::string& path, const std::string& bytes)
{
    const std::vector<const Tree*> trees = TreesOf(reference);
    return std::any_of(trees.begin(), trees.end(), [&](const Tree* tree) {
        const auto found = tree->find(path);
        return found != tree->end() && found->second == bytes;
    });
}

std::string Text(const Tree& tree, const std::string& path)
{
    const auto found = tree.find(path);
    return found == tree.end() ? std::string() : found->second;
}

const IndexRow* RowNamed(const IndexFile& index, const std::string& name)
{
    for (const IndexRow& row : index.Rows) {
        if (row.Name == name)
            return &row;
    }
    return nullptr;
}

// A file that no undisturbed run leaves has a name of its own in each run.
std::string NameOfStray(const std::string& path)
{
    const std::size_t folder = path.rfind('/', path.size() - 2) + 1;
    return path.ends_with("/") ? path : path.substr(0, folder) + "(own file)";
}

// The records that undisturbed runs have made under a name, the old one included.
bool IsRecordOfSome(const Reference& reference, const std::string& path, const IndexRow& row)
{
    for (const Tree* const tree : TreesOf(reference)) {
        const IndexFile index = ReadIndex(Text(*tree, path));
        const IndexRow* const known = RowNamed(index, row.Name);
        if (known != nullptr && known->Bytes == row.Bytes)
            return true;
    }
    return false;
}

void JudgeIndex(const Reference& reference, const Tree& now, const std::string& path, Findings& findings)
{
    const IndexFile index = ReadIndex(Text(now, path)), before = ReadIndex(Text(reference.Before, path));
    if (!index.Whole) {
        findings.push_back(path + ": holds no whole records");
        return;
    }
    for (const IndexRow& old : before.Rows) {
        if (RowNamed(index, old.Name) == nullptr)
            findings.push_back(path + ": record lost: " + old.Name);
    }
    const std::string folder = path.substr(0, path.rfind('/') + 1);
    for (const IndexRow& row : index.Rows) {
        if (&row != RowNamed(index, row.Name))
            findings.push_back(path + ": two records: " + row.Name);
        if (!IsRecordOfSome(reference, path, row))
            findings.push_back(path + ": record of no run: " + row.Name);
        const std::string program = folder + PlaceOfProgram(row.Name);
        const IndexRow* const old = RowNamed(before, row.Name);
        if (!now.contains(program))
            findings.push_back(path + ": record without its program: " + row.Name);
        else if ((old == nullptr || old->Bytes != row.Bytes) && !Text(reference.Before, program).empty() &&
                 Text(now, program) == Text(reference.Before, program))
            findings.push_back(path + ": new record, old program: " + row.Name);
    }
    if (!std::is_sorted(index.Rows.begin(), index.Rows.end(),
                        [](const IndexRow& a, const IndexRow& b) { return a.Name < b.Name; }))
        findings.push_back(path + ": records out of order");
}

// `least` and `most`: how often each new row stands.
void JudgeCutList(const Reference& reference, const Tree& now, const std::string& path, int least, int most,
                  Findings& findings)
{
    const CutList list = ReadCutList(Text(now, path)), before = ReadCutList(Text(reference.Before, path)),
                  once = ReadCutList(Text(reference.Once, path));
    if (!list.Whole) {
        findings.push_back(path + ": no whole list");
        return;
    }
    const std::size_t old = before.Rows.size();
    if (list.Rows.size() < old || !std::equal(before.Rows.begin(), before.Rows.end(), list.Rows.begin())) {
        findings.push_back(path + ": old rows lost");
        return;
    }
    for (std::size_t i = old; i < list.Rows.size(); ++i) {
        if (std::find(once.Rows.begin() + static_cast<long>(old), once.Rows.end(), list.Rows[i]) ==
            once.Rows.end())
            findings.push_back(path + ": row of no run: " + list.Rows[i]);
    }
    for (std::size_t i = old; i < once.Rows.size(); ++i) {
        const long found =
            std::count(list.Rows.begin() + static_cast<long>(old), list.Rows.end(), once.Rows[i]);
        if (found < least)
            findings.push_back(path + ": row missing: " + once.Rows[i]);
        if (found > most)
            findings.push_back(path + ": row " + std::to_string(found) + " times: " + once.Rows[i]);
    }
}

} // namespace

void JudgeStates(const Tree& now, const std::string& path, Findings& findings)
{
    constexpr int fieldsOfALine = 5;
    const std::string text = Text(now, path);
    bool isWhole = text.starts_with("Korvanti drawing states 1\n") && text.ends_with("\n");
    std::size_t at = text.find('\n') + 1;
    while (isWhole && at < text.size()) {
        const std::size_t end = text.find('\n', at);
        const auto line = std::string_view(text).substr(at, end - at);
        isWhole = std::count(line.begin(), line.end(), '\t') >= fieldsOfALine - 1;
        at = end + 1;
    }
    if (!isWhole)
        findings.push_back(path + ": no whole list of states");
}

Findings StraysIn(const Reference& reference, const Tree& now)
{
    Findings strays;
    for (const auto& [path, bytes] : now) {
        if (!IsKnown(reference, path) && !IsTrigger(path) && !IsLock(path) && !IsStates(path))
            strays.push_back(NameOfStray(path) + ": left over");
    }
    return strays;
}

Findings JudgeKept(const Reference& reference, const Tree& now)
{
    Findings findings;
    for (const auto& [path, bytes] : reference.Before) {
        if (!now.contains(path) && !IsTrigger(path))
            findings.push_back(path + ": lost");
    }
    for (const auto& [path, bytes] : now) {
        if (IsStates(path)) {
            JudgeStates(now, path, findings);
            continue;
        }
        if (!IsKnown(reference, path) || IsTrigger(path) || IsLock(path) || reference.Volatile.contains(path))
            continue;
        if (IsIndex(path))
            JudgeIndex(reference, now, path, findings);
        else if (IsCutList(path))
            JudgeCutList(reference, now, path, 0, 2, findings);
        else if (!MayHold(reference, path, bytes))
            findings.push_back(path + ": bytes of no run (" + std::to_string(bytes.size()) + ")");
    }
    if (now.contains(NotesPlace) && !HoldsLinesInOrder(Text(now, NotesPlace), reference.OperatorLines))
        findings.push_back(NotesPlace + ": the operator's lines are lost");
    return findings;
}

Findings JudgeDone(const Reference& reference, const Tree& now, int runs, int rows)
{
    const Tree& wanted = reference.Final != nullptr ? *reference.Final : reference.Once;
    Findings findings;
    for (const auto& [path, bytes] : wanted) {
        const auto found = now.find(path);
        if (IsLock(path) || IsStates(path))
            continue;
        if (found == now.end())
            findings.push_back(path + ": missing");
        else if (IsCutList(path))
            JudgeCutList(reference, now, path, 1, rows, findings);
        else if (found->second != bytes && !reference.Volatile.contains(path) &&
                 !(runs > 1 && IsNotes(path) && MayHold(reference, path, found->second)))
            findings.push_back(path + ": differs");
    }
    for (const auto& [path, bytes] : now) {
        if (IsStates(path))
            JudgeStates(now, path, findings);
        else if (!wanted.contains(path) && !IsLock(path))
            findings.push_back((IsTrigger(path) ? path : NameOfStray(path)) + ": left over");
    }
    return findings;
}

bool TellsCause(const Reference& reference, const std::string& said, const std::string& path, int error,
                const fs::path& root)
{
    std::string named = path;
    const std::string place = fs::path(path).lexically_relative(root).generic_string();
    const auto known = [&](const std::string& name) {
        return reference.Before.contains(name) || reference.Once.contains(name);
    };
    if (IsLock(place) || (!known(place) && !known(place + "/")))
        named = fs::path(path).parent_path().string();
    for (const std::string& line : LinesOf(said, "\n")) {
        if (Lowered(line).find(Lowered(named)) != std::string::npos &&
            line.find(std::strerror(error)) != std::string::npos)
            return true;
    }
    return false;
}

} // namespace fault_test
