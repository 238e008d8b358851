// Most drawings need nothing: the reader goes first, and only what it met asks for the drawing's text. Relies
// on the facts and records that the reader leaves; leaves records made anew where an import changed the
// drawing.
#include "import/import_reading.h"

#include <utility>

#include "drawing/drawing_facts.h"
#include "drawing/dxf_reader.h"
#include "import/binary_drawing.h"
#include "import/drawing_import.h"
#include "import/drawing_letters.h"
#include "import/import_need.h"
#include "platform/events.h"
#include "platform/nearest_letters.h"
#include "platform/numbers.h"
#include "platform/run_error.h"
#include "state/report.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr std::size_t HeadBytes = 64;

std::string UnicodeNumber(char32_t letter)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text = "U+";
    for (int shift = letter > 0xFFFF ? 16 : 12; shift >= 0; shift -= 4)
        text += digits[letter >> shift & 15];
    return text;
}

void TellLetters(const LettersTaken& taken)
{
    if (!taken.UnknownPage.empty())
        Tell(Message::CodePageUnknown, {{"page", taken.UnknownPage}});
    if (taken.IsNoUtf8)
        Tell(Message::TextsNotUtf8);
    if (taken.Foreign > 0)
        Tell(Message::LettersReplaced, {{"letter", UnicodeNumber(taken.FirstForeign)},
                                        {"nearest", taken.FirstNearest},
                                        {"count", static_cast<long long>(taken.Foreign)}});
    for (const std::string& layer : taken.Layers)
        Tell(Message::LayerLettersReplaced, {{"layer", layer}});
}

std::string TextOfDrawing(std::string_view path)
{
    std::string text;
    const FileOutcome outcome = ReadWholeFile(path, text);
    if (!outcome.Ok())
        throw RunError{outcome.Number, outcome.Cause};
    if (IsBinaryDrawing(text))
        text = AsciiOfBinary(text);
    DropUnicodeMark(text);
    return text;
}

bool NeedsConversion(std::string_view path)
{
    std::string head;
    return ReadFileHead(path, head, HeadBytes).Ok() && (IsBinaryDrawing(head) || HasUnicodeMark(head));
}

bool StopsHere(const std::string& path)
{
    return Run.RunFailed != False || path == "~";
}

void TellFindings(std::string_view text)
{
    try {
        ImportText(text, ImportForm::Findings).Findings.TellAll(ImportMode::Told);
    } catch (const RunError& error) { // blocks without measure; they stay closed
        Tell(Message::ImportNotWorkedOut, {{"cause", error.Cause}});
    }
}

void TellAbort()
{
    Tell(Message::UserAborted);
    Run.RunFailed = True;
}

// What changes the geometry.
void ImportByMode(std::string& path, std::string text)
{
    if (text.empty()) {
        text = TextOfDrawing(path);
        TakeLetters(text);
    }
    if (ModeOfImport() == ImportMode::Told) {
        TellFindings(text);
    } else {
        ImportedDrawing imported = ImportText(text, ImportForm::Reading);
        if (imported.HasEntities && !UserAborted()) {
            imported.Findings.TellAll(ImportMode::Full);
            text = {};
            if (imported.Findings.ChangesDrawing())
                ReadDrawingText(path, std::move(imported.Text));
        }
    }
    if (UserAborted() && Run.RunFailed == False)
        TellAbort();
}

} // namespace

void ReadAnyDrawing(std::string& path)
{
    TellUnknownImport();
    std::string text; // where the reader needs another one than the file's
    if (NeedsConversion(path)) {
        text = TextOfDrawing(path);
        TellLetters(TakeLetters(text));
        ReadDrawingText(path, {text, {}});
    } else {
        ReadDrawing(path);
        if (!StopsHere(path) && MetForeignLetters()) {
            text = TextOfDrawing(path);
            const LettersTaken taken = TakeLetters(text);
            TellLetters(taken);
            if (taken.IsChanged)
                ReadDrawingText(path, {text, {}});
        }
    }
    if (!StopsHere(path) && ModeOfImport() != ImportMode::Plain && AsksForImport())
        ImportByMode(path, std::move(text));
}

FileOutcome WriteCleanDrawing(std::string_view path, std::string_view clean)
{
    std::string text = TextOfDrawing(path);
    TellLetters(TakeLetters(text));
    ImportedDrawing imported = ImportText(text, ImportForm::Clean);
    if (!imported.HasEntities)
        return {ErrorFileAccess, "the drawing has no section ENTITIES"};
    if (UserAborted())
        return {ErrorFileAccess, "stopped"};
    imported.Findings.TellAll(ImportMode::Full);
    if (imported.LeftOfClean > 0)
        Tell(Message::LeftOfCleanDrawing, {{"count", static_cast<long long>(imported.LeftOfClean)}});
    return ReplaceFile(clean, imported.Text.Text);
}

} // namespace kv
