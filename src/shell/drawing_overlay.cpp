// Takes the entities as they were read, before layers are rewritten, and the answers of the ledger at the
// end. Views of the edges are left out: on the sheet the edges lie elsewhere.
#include "shell/drawing_overlay.h"

#include <cmath>
#include <map>

#include "ledger/entity_answers.h"
#include "ledger/layer_words.h"
#include "machine/arcs.h"
#include "shell/program_origins.h"
#include "state/drawn_entities.h"
#include "state/drawn_names.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr double MarkSize = 4;    // mm: of an entity that has no way, such as a block
constexpr double FaceMargin = 25; // mm around the face within which entities are shown
constexpr double StraightBulge = 1e-6;

// In drawing units.
struct ReadShape {
    Long Drawn = 0;
    std::vector<Move> Way;
};
std::vector<ReadShape> Shapes;
std::vector<DrawnShape> Finished;

Move LineTo(const PathPoint& from, const PathPoint& to)
{
    Move move;
    move.From = from;
    move.To = to;
    return move;
}

Move Circle(const PathPoint& centre, double radius, double startAngle, double sweep)
{
    Move move;
    move.IsArc = true;
    move.Centre = centre;
    move.Sweep = sweep;
    const auto at = [&](double angle) {
        return PathPoint{centre.X + radius * std::cos(angle * Degree),
                         centre.Y + radius * std::sin(angle * Degree)};
    };
    move.From = at(startAngle);
    move.To = at(startAngle + sweep);
    return move;
}

std::vector<Move> Cross(const PathPoint& at)
{
    return {LineTo({at.X - MarkSize, at.Y - MarkSize}, {at.X + MarkSize, at.Y + MarkSize}),
            LineTo({at.X - MarkSize, at.Y + MarkSize}, {at.X + MarkSize, at.Y - MarkSize})};
}

Move Span(const PathPoint& from, const PathPoint& to, double bulge)
{
    Move move = LineTo(from, to);
    const double chord = Between(from, to);
    if (std::fabs(bulge) < StraightBulge || !(chord > 0))
        return move;
    const double radius = chord * (1 + bulge * bulge) / (4 * std::fabs(bulge));
    TurnByRadius(move, to, std::fabs(bulge) > 1 ? -radius : radius, bulge > 0);
    return move;
}

// From the polyline's record to its last vertex, which `index` becomes.
std::vector<Move> PolylineWay(Long& index)
{
    struct Vertex {
        PathPoint At;
        double Bulge = 0;
    };
    const bool isClosed = (Entities[index].Flags & 1) != 0;
    std::vector<Vertex> vertices;
    while (index < Entities.Last() && Entities[index + 1].Kind == "VERTEX") {
        const DxfEntity& vertex = Entities[++index];
        vertices.push_back({{vertex.X1, vertex.Y1}, vertex.Bulge});
    }
    std::vector<Move> way;
    for (std::size_t i = 1; i < vertices.size(); ++i)
        way.push_back(Span(vertices[i - 1].At, vertices[i].At, vertices[i - 1].Bulge));
    if (isClosed && vertices.size() > 1)
        way.push_back(Span(vertices.back().At, vertices.front().At, vertices.back().Bulge));
    return way;
}

// Where an arc ends below its start the angle runs through 0.
double SweepOf(const DxfEntity& arc)
{
    const double sweep = std::fmod(static_cast<double>(arc.EndAngle) - arc.StartAngle, 360);
    return sweep > 0 ? sweep : sweep + 360;
}

std::vector<Move> WayOfEntity(Long& index)
{
    const DxfEntity& entity = Entities[index];
    const PathPoint at{entity.X1, entity.Y1};
    if (entity.Kind == "POLYLINE")
        return PolylineWay(index);
    if (entity.Kind == "LINE")
        return {LineTo(at, {entity.X2, entity.Y2})};
    if (entity.Kind == "CIRCLE" && entity.Radius > 0)
        return {Circle(at, entity.Radius, 0, 360)};
    if (entity.Kind == "ARC" && entity.Radius > 0)
        return {Circle(at, entity.Radius, entity.StartAngle, SweepOf(entity))};
    return {};
}

void TakeShapes()
{
    Shapes.clear();
    Finished.clear();
    for (Long i = 1; i <= Entities.Last(); ++i) {
        const DxfEntity& entity = Entities[i];
        if (entity.Drawn == 0 || entity.Kind == "VERTEX" || entity.Kind == "SEQEND")
            continue;
        const Long drawn = entity.Drawn;
        const PathPoint at{entity.X1, entity.Y1};
        std::vector<Move> way = WayOfEntity(i);
        if (way.empty())
            way = {LineTo(at, at)};
        Shapes.push_back({drawn, std::move(way)});
    }
}

struct Outcome {
    bool IsWork = false, IsLeft = false, IsMisspelt = false;
};

// Layers whose names nearly spell a word, by their numbers: drawings have few layers and many entities.
class NearWords {
  public:
    bool Has(Long layer)
    {
        const auto [known, isNew] = Known.try_emplace(layer);
        if (isNew)
            known->second = !NearestWord(NameOfNumber(layer)).empty();
        return known->second;
    }

  private:
    std::map<Long, bool> Known;
};

// By the entity as it is drawn: it may stand for several operations.
std::map<Long, Outcome> OutcomesOf(const EntityAnswers& answers)
{
    std::map<Long, Outcome> outcomes;
    NearWords near;
    for (Long drawn = 1; drawn <= DrawnEntities.Last(); ++drawn) {
        if (!AnswersForItself(drawn))
            continue;
        const EntityAnswer& answer = answers[static_cast<std::size_t>(drawn)];
        Outcome& outcome = outcomes[DrawnAs(drawn)];
        outcome.IsWork |= answer.Fate == EntityFate::Machined && answer.Why == Message::None;
        const bool isNote = answer.Why == Message::TextNotMachined;
        outcome.IsMisspelt |= answer.Fate == EntityFate::MeansNothing && near.Has(LookOf(drawn).Layer);
        outcome.IsLeft |= (answer.Fate == EntityFate::Left && !isNote) || answer.Fate == EntityFate::Lost ||
                          (answer.Fate == EntityFate::Machined && answer.Why != Message::None);
    }
    return outcomes;
}

PathPoint OnPanel(const PathPoint& drawn)
{
    const double scale = Run.DrawingScale, unit = Run.UnitFactor;
    return {(drawn.X * scale - Run.OriginX) * unit, (drawn.Y * scale - Run.OriginY) * unit};
}

bool IsOnFace(const std::vector<Move>& way)
{
    const double length = Run.SideWidth[Face] * Run.UnitFactor, width = Run.SideHeight[Face] * Run.UnitFactor;
    const auto isNear = [&](const PathPoint& p) {
        return p.X >= -FaceMargin && p.X <= length + FaceMargin && p.Y >= -FaceMargin &&
               p.Y <= width + FaceMargin;
    };
    for (const Move& move : way)
        if (!isNear(move.From) || !isNear(move.To))
            return false;
    return true;
}

void FinishShapes()
{
    const std::map<Long, Outcome> outcomes = OutcomesOf(AnswersOfRun());
    for (ReadShape& shape : Shapes) {
        for (Move& move : shape.Way) {
            move.From = OnPanel(move.From);
            move.To = OnPanel(move.To);
            move.Centre = OnPanel(move.Centre);
        }
        const auto outcome = outcomes.find(shape.Drawn);
        if (outcome == outcomes.end() || !IsOnFace(shape.Way))
            continue;
        const bool isMisspelt = outcome->second.IsMisspelt;
        const bool isLeft = isMisspelt || (outcome->second.IsLeft && !outcome->second.IsWork);
        if (shape.Way.size() == 1 && !shape.Way[0].IsArc &&
            Between(shape.Way[0].From, shape.Way[0].To) == 0) {
            if (!isLeft) // a text, say
                continue;
            shape.Way = Cross(shape.Way[0].From);
        }
        Finished.push_back({std::move(shape.Way), isLeft,
                            EntityText(shape.Drawn) + (isMisspelt ? ": not machined, its layer means nothing"
                                                       : isLeft   ? ": not machined as its layer asks"
                                                                  : ""),
                            static_cast<std::size_t>(DrawnEntities[shape.Drawn].Line)});
    }
    Shapes.clear();
}

} // namespace

void KeepDrawnShapes(std::string_view stage)
{
    if (stage == "entities") {
        TakeShapes();
        ForgetOrigins();
    } else if (stage == "programs") {
        FinishShapes();
        TakeOrigins();
    }
}

std::vector<DrawnShape> DrawnShapesOfRun()
{
    return std::move(Finished);
}

} // namespace kv
