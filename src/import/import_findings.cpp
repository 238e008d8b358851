// Lines in the order of things, layers and kinds, whatever the order of the drawing.
#include "import/import_findings.h"

#include <algorithm>

#include "platform/numbers.h"
#include "state/report.h"

namespace kv {

namespace {

constexpr std::size_t MostLines = 1000; // of a damaged drawing; each further one counts in none

struct ThingRow {
    Message IfTold, IfFull;
    std::string_view Subject, Detail; // names of the message's values
};

const ThingRow& RowOfThing(ImportThing thing)
{
    // In the order of ImportThing.
    static constexpr ThingRow rows[] = {
        {Message::BlockLeftClosed, Message::BlockOpened, "block", "what"},
        {Message::CurveLeft, Message::CurveFitted, "kind", "what"},
        {Message::CircleLeft, Message::CircleMade, "kind", "diameter"},
        {Message::MirroredLeft, Message::MirroredTurned, "kind", "what"},
        {Message::HiddenRead, Message::HiddenLeftOut, "kind", "where"},
        {Message::MtextRead, Message::MtextSplit, "kind", "what"},
        {Message::EntityNotImported, Message::EntityNotImported, "kind", "cause"},
    };
    return rows[static_cast<std::size_t>(thing)];
}

} // namespace

void ImportFindings::Add(ImportThing thing, const EntityStyle& style, std::string_view subject,
                         std::string_view detail)
{
    Key key{thing, style.Layer, std::string(subject)};
    if (thing == ImportThing::Hidden) // each place is a line of its own
        std::get<2>(key) += '\n' + std::string(detail);
    auto found = Counts.find(key);
    if (found == Counts.end()) {
        if (Counts.size() >= MostLines)
            return;
        found = Counts.emplace(key, Count{0, style, std::string(subject), std::string(detail)}).first;
    }
    ++found->second.Times;
}

bool ImportFindings::ChangesDrawing() const
{
    return LengthOf(Move) > 0 || std::any_of(Counts.begin(), Counts.end(), [](const auto& count) {
               return std::get<0>(count.first) != ImportThing::Failed;
           });
}

void ImportFindings::TellAll(ImportMode mode) const
{
    const bool isFull = mode == ImportMode::Full;
    for (const auto& [key, count] : Counts) {
        const ThingRow& row = RowOfThing(std::get<0>(key));
        MessageValues values = {{"layer", std::get<1>(key)},
                                {row.Subject, count.Subject},
                                {row.Detail, count.Detail},
                                {"count", static_cast<long long>(count.Times)},
                                {"line", static_cast<long long>(count.First.Line)}};
        if (!count.First.Handle.empty())
            values.emplace_back("handle", count.First.Handle);
        Tell(isFull ? row.IfFull : row.IfTold, std::move(values));
    }
    if (LengthOf(Move) > 0)
        Tell(isFull ? Message::DrawingMoved : Message::DrawingNotMoved,
             {{"x", PlainText(static_cast<Single>(Move.X))}, {"y", PlainText(static_cast<Single>(Move.Y))}});
}

} // namespace kv
