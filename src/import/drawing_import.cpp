// Two walks over the entities. The first one sees how far the border reaches, in which unit it is, and which
// loose lines and arcs meet in circles; the second one brings each entity to its place. A block's entities
// are walked anew for each INSERT, so nothing of a block is kept. What is not known is handed on as it
// stands.
#include "import/drawing_import.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "import/block_place.h"
#include "import/clean_form.h"
#include "import/drawing_index.h"
#include "import/drawn_circles.h"
#include "import/drawn_curves.h"
#include "import/multiline_text.h"
#include "import/pair_writer.h"
#include "import/panel_extent.h"
#include "import/placed_entity.h"
#include "platform/events.h"
#include "platform/run_error.h"
#include "platform/text.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr Long MostOpened = 1'000'000;    // entities and copies that blocks of one drawing bring
constexpr Long MostFitted = 500'000;      // lines and arcs of all curves; no program has a tenth of them
constexpr std::size_t FailedCurve = 1000; // lines and arcs that one counts for which cannot be fitted
constexpr int DeepestNesting = 64;        // blocks in blocks

class DrawingImport {
  public:
    DrawingImport(std::string_view text, ImportForm form) : Text(text), Form(form), Index(IndexDrawing(text))
    {
    }
    ImportedDrawing Run();

  private:
    void WalkAll();
    void WalkRange(const TextRange& range, const BlockPlace& place);
    void Bring(const SourceEntity& entity, const BlockPlace& place);
    void BringFlat(const SourceEntity& entity, const EntityStyle& style, const BlockPlace& place);
    bool BringToPlace(const SourceEntity& entity, const BlockPlace& place, FlatEntity& flat);
    bool MakeRound(const SourceEntity& entity, const BlockPlace& place, FlatEntity& flat);
    void BringCurve(const SourceEntity& entity, const EntityStyle& style, const BlockPlace& place);
    void BringTexts(const SourceEntity& entity, const EntityStyle& style, const BlockPlace& place);
    void BringUnknown(const SourceEntity& entity, const BlockPlace& place);
    void OpenInsert(const SourceEntity& insert, const EntityStyle& style, const BlockPlace& place);
    void OpenCopies(const SourceEntity& insert, const DrawnBlock& block, const BlockPlace& inner);
    bool Opens(const SourceEntity& insert, const EntityStyle& style, const BlockPlace& place,
               const DrawnBlock*& block);
    void BringAttributes(const SourceEntity& insert, const BlockPlace& place);
    bool IsHidden(const SourceEntity& entity, const EntityStyle& style, const BlockPlace& place);
    void CountOpened(const BlockPlace& place);
    void CountFitted(const EntityStyle& style, std::size_t pieces);
    // `source`: the entity as the drawing has it, where nothing of it was changed.
    void Emit(const FlatEntity& flat, const SourceEntity* source);
    bool TakesRing(const FlatEntity& flat);
    void Put(const FlatEntity& flat, const SourceEntity* source);
    void GiveHandle(FlatEntity& flat);
    void Note(ImportThing thing, const EntityStyle& style, std::string_view subject, std::string_view detail,
              const BlockPlace& place);
    void SettleRings();

    std::string_view Text;
    ImportForm Form;
    DrawingIndex Index;
    ImportedDrawing Result;
    PairWriter Writer;
    PanelExtent Panel;
    double Tolerance = ImportToleranceMm() / 25.4, Grid = 0.01; // drawing units; first as if it were inch
    SpacePoint Move;
    bool IsFirstWalk = true;
    Long Opened = 0, Fitted = 0;
    std::size_t Visited = 0;                 // number of the entity that is brought, the same in both walks
    std::vector<LooseEntity> Loose;          // by those numbers
    std::map<std::size_t, FlatEntity> Rings; // circle in place of its first piece
    std::set<std::size_t> InRings;           // further pieces
    std::vector<std::string> OpenBlocks;     // around the walk, in upper case
    std::map<std::string, Long> Made;        // kinds that the outermost INSERT makes
    std::string LastHandle;
    std::size_t HighestHandle = 0;
    std::set<std::string> LayersWritten;
};

// As the drawing's reader has it.
std::string_view KindInReports(std::string_view kind)
{
    if (kind == "LWPOLYLINE")
        return "POLYLINE";
    return kind == "ATTRIB" || kind == "ATTDEF" ? "TEXT" : kind;
}

// Some programs close a curve that has come back by a polyline of no length; the tool would plunge there.
bool IsDot(const FlatEntity& flat)
{
    constexpr double nothing = 1e-9; // drawing units
    return flat.Kind == FlatKind::Polyline && !flat.Points.empty() &&
           std::all_of(flat.Points.begin(), flat.Points.end(), [&](const VertexPoint& p) {
               return std::hypot(p.X - flat.Points[0].X, p.Y - flat.Points[0].Y) <= nothing;
           });
}

void DrawingImport::Note(ImportThing thing, const EntityStyle& style, std::string_view subject,
                         std::string_view detail, const BlockPlace& place)
{
    const bool isOfBlock = place.Depth > 0 && thing != ImportThing::Failed && thing != ImportThing::Hidden;
    if (!IsFirstWalk && !isOfBlock) // what a block holds counts with its INSERT
        Result.Findings.Add(thing, style, subject, detail);
}

void DrawingImport::GiveHandle(FlatEntity& flat)
{
    if (Form != ImportForm::Clean || (!flat.Style.Handle.empty() && flat.Style.Handle != LastHandle)) {
        LastHandle = flat.Style.Handle;
        return;
    }
    flat.Style.Handle = HexText(++HighestHandle);
}

void DrawingImport::Put(const FlatEntity& flat, const SourceEntity* source)
{
    if (Form == ImportForm::Findings)
        return;
    if (source != nullptr && Form == ImportForm::Reading) {
        Writer.Copy(*source);
        return;
    }
    FlatEntity written = flat;
    GiveHandle(written);
    if (Form == ImportForm::Clean)
        LayersWritten.insert(written.Style.Layer);
    Writer.Write(written);
}

// A piece of a ring: the circle stands in the place of the first one, the others are gone.
bool DrawingImport::TakesRing(const FlatEntity& flat)
{
    const std::size_t number = Visited;
    if (InRings.contains(number))
        return true;
    const auto ring = Rings.find(number);
    if (ring == Rings.end())
        return false;
    const FlatEntity& circle = ring->second;
    Result.Findings.Add(ImportThing::Circle, flat.Style, "ring of " + std::string(KindWord(flat.Kind)),
                        PlainText(static_cast<Single>(2 * circle.Radius)));
    if (const auto placed = PlacedEntity(circle, ShiftedBy(Move), Tolerance))
        Put(*placed, nullptr);
    return true;
}

void DrawingImport::Emit(const FlatEntity& flat, const SourceEntity* source)
{
    if (IsFirstWalk) {
        Panel.Take(flat);
        if (CanBeLoose(flat))
            Loose.push_back({Visited, flat});
        return;
    }
    if (!TakesRing(flat))
        Put(flat, source);
}

void DrawingImport::CountOpened(const BlockPlace& place)
{
    if (place.Depth > 0 && ++Opened > MostOpened)
        throw RunError{ErrorOverflow, "INSERT in line " + WholeText(place.Line) + " opens to more than " +
                                          WholeText(MostOpened) + " entities"};
}

void DrawingImport::CountFitted(const EntityStyle& style, std::size_t pieces)
{
    Fitted += static_cast<Long>(pieces);
    if (Fitted > MostFitted)
        throw RunError{ErrorOverflow, "Curves up to that in line " + WholeText(style.Line) +
                                          " need more than " + WholeText(MostFitted) + " lines and arcs"};
}

bool DrawingImport::IsHidden(const SourceEntity& entity, const EntityStyle& style, const BlockPlace& place)
{
    const auto layer = Index.Layers.find(UpperCase(style.Layer));
    const bool isInsert = entity.Head.Kind == "INSERT";
    std::string_view where;
    if (place.Depth == 0 && entity.Head.Whole(67) == 1)
        where = "in paper space";
    else if (entity.Head.Whole(60) == 1)
        where = "that is invisible";
    else if (layer != Index.Layers.end() && layer->second.IsFrozen)
        where = "on a frozen layer";
    else if (layer != Index.Layers.end() && layer->second.IsOff && !isInsert) // its entities have layers
        where = "on a layer that is off";
    if (where.empty())
        return false;
    Note(ImportThing::Hidden, style, Trim(entity.Head.Kind), where, place);
    return true;
}

void DrawingImport::BringTexts(const SourceEntity& entity, const EntityStyle& style, const BlockPlace& place)
{
    std::vector<FlatEntity> texts = TextsOfMtext(entity.Head);
    Note(ImportThing::Text, style, entity.Head.Kind,
         WholeText(static_cast<long long>(texts.size())) + " TEXT", place);
    for (FlatEntity& text : texts) {
        text.Style = style;
        CountOpened(place);
        ++Made["TEXT"];
        if (const auto placed = PlacedEntity(text, place.Map, Tolerance))
            Emit(*placed, nullptr);
    }
}

void DrawingImport::BringCurve(const SourceEntity& entity, const EntityStyle& style, const BlockPlace& place)
{
    FittedCurve curve = entity.Head.Kind == "SPLINE" ? FitSpline(entity.Head, place.Map, Tolerance)
                                                     : FitEllipse(entity.Head, place.Map, Tolerance);
    if (!curve.Path) {
        if (place.Depth > 0) // it may be there a million times
            CountFitted(style, FailedCurve);
        Note(ImportThing::Failed, style, entity.Head.Kind, curve.Cause, place);
        BringUnknown(entity, place);
        return;
    }
    curve.Path->Style = style;
    CountOpened(place);
    CountFitted(style, curve.Path->Points.size());
    if (const auto circle =
            WantsCircles(style.Layer) ? CircleOf(*curve.Path, Tolerance, Grid) : std::nullopt) {
        Note(ImportThing::Circle, style, entity.Head.Kind, PlainText(static_cast<Single>(2 * circle->Radius)),
             place);
        ++Made["CIRCLE"];
        Emit(*circle, nullptr);
        return;
    }
    const std::size_t pieces = curve.Path->Points.size() - (curve.Path->IsClosed() ? 0 : 1);
    Note(ImportThing::Curve, style, entity.Head.Kind, WholeText(static_cast<long long>(pieces)), place);
    ++Made["POLYLINE"];
    Emit(*curve.Path, nullptr);
}

void DrawingImport::BringUnknown(const SourceEntity& entity, const BlockPlace& place)
{
    if (place.Depth > 0) {
        CountOpened(place);
        ++Made[std::string(Trim(entity.Head.Kind)) + " left"];
        return;
    }
    if (IsFirstWalk)
        return;
    if (Form == ImportForm::Reading)
        Writer.Copy(entity);
    else if (entity.Head.Kind != "SEQEND")
        ++Result.LeftOfClean;
}

// Moved, turned, out of its mirror. False where nothing is left of it.
bool DrawingImport::BringToPlace(const SourceEntity& entity, const BlockPlace& place, FlatEntity& flat)
{
    if (IsDownward(flat.Extrusion))
        Note(ImportThing::Mirrored, flat.Style, entity.Head.Kind, {}, place);
    const bool wasPolyline = flat.Kind == FlatKind::Polyline;
    const std::optional<FlatEntity> placed = PlacedEntity(flat, place.Map, Tolerance);
    if (!placed) {
        Note(ImportThing::Failed, flat.Style, entity.Head.Kind, "it is squeezed into a line", place);
        CountFitted(flat.Style, FailedCurve);
        return false;
    }
    flat = *placed;
    if (flat.Kind == FlatKind::Polyline && (place.Depth > 0 || !wasPolyline))
        CountFitted(flat.Style, flat.Points.size());
    return true;
}

// A polyline that is a circle, where its layer wants that. True where it was made round.
bool DrawingImport::MakeRound(const SourceEntity& entity, const BlockPlace& place, FlatEntity& flat)
{
    const bool asCircle = WantsCircles(flat.Style.Layer);
    if (!asCircle && !WantsRoundWays(flat.Style.Layer))
        return false;
    const std::optional<FlatEntity> circle = CircleOf(flat, Tolerance, Grid);
    const std::optional<FlatEntity> round = circle && !asCircle ? RoundWay(flat, *circle) : circle;
    if (!round)
        return false;
    Note(ImportThing::Circle, flat.Style, entity.Head.Kind, PlainText(static_cast<Single>(2 * round->Radius)),
         place);
    flat = *round;
    return true;
}

void DrawingImport::BringFlat(const SourceEntity& entity, const EntityStyle& style, const BlockPlace& place)
{
    const std::optional<FlatEntity> drawn = FlatOf(entity);
    if (!drawn) {
        BringUnknown(entity, place);
        return;
    }
    CountOpened(place);
    FlatEntity flat = *drawn;
    flat.Style = style;
    if (IsDot(flat)) {
        Note(ImportThing::Hidden, style, entity.Head.Kind, "without a length", place);
        return;
    }
    const bool isMoved = IsDownward(flat.Extrusion) || place.Depth > 0 || LengthOf(Move) > 0;
    if (isMoved && !BringToPlace(entity, place, flat))
        return;
    const bool isRound = MakeRound(entity, place, flat);
    ++Made[std::string(flat.Kind == FlatKind::Circle ? "CIRCLE" : KindInReports(entity.Head.Kind))];
    Emit(flat, isMoved || isRound ? nullptr : &entity);
}

void DrawingImport::BringAttributes(const SourceEntity& insert, const BlockPlace& place)
{
    for (const SourceRecord& part : insert.Parts) {
        if (part.Kind != "ATTRIB")
            continue;
        ++Visited;
        SourceEntity attribute;
        attribute.Head = part;
        EntityStyle style = StyleInBlock(part, place);
        style.Line = insert.Head.Line + 1;
        BringFlat(attribute, style, place);
    }
}

// False where the block cannot be opened, which is noted.
bool DrawingImport::Opens(const SourceEntity& insert, const EntityStyle& style, const BlockPlace& place,
                          const DrawnBlock*& block)
{
    const std::string_view name = insert.Head.Word(2);
    const std::string upper = UpperCase(name);
    const auto found = Index.Blocks.find(upper);
    std::string cause;
    if (found == Index.Blocks.end())
        cause = "block " + std::string(name) + " is not in the drawing";
    else if (std::find(OpenBlocks.begin(), OpenBlocks.end(), upper) != OpenBlocks.end())
        cause = "block " + std::string(name) + " holds itself";
    else if (place.Depth >= DeepestNesting)
        cause = "more than " + WholeText(DeepestNesting) + " blocks in one another";
    else if (!HasUsableScale(insert.Head))
        cause = "its scale is 0, or no number";
    if (cause.empty()) {
        block = &found->second;
        return true;
    }
    Note(ImportThing::Failed, style, insert.Head.Kind, cause, place);
    return false;
}

void DrawingImport::OpenCopies(const SourceEntity& insert, const DrawnBlock& block, const BlockPlace& inner)
{
    const int columns = CopiesOf(insert.Head, 70), rows = CopiesOf(insert.Head, 71);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            CountOpened(inner);
            BlockPlace copy = inner;
            copy.Map = PlaceOfCopy(inner.Map, insert.Head, block, column, row);
            WalkRange(block.Entities, copy);
        }
    }
}

void DrawingImport::OpenInsert(const SourceEntity& insert, const EntityStyle& style, const BlockPlace& place)
{
    const DrawnBlock* block = nullptr;
    if (!Opens(insert, style, place, block)) {
        BringUnknown(insert, place);
        return;
    }
    if (place.Depth == 0)
        Made.clear();
    BlockPlace inner = place;
    inner.Depth = place.Depth + 1;
    inner.Layer = style.Layer;
    inner.Color = style.Color;
    inner.Handle = style.Handle;
    inner.Line = style.Line;
    OpenBlocks.push_back(UpperCase(insert.Head.Word(2)));
    OpenCopies(insert, *block, inner);
    OpenBlocks.pop_back();
    BlockPlace ofAttributes = place; // they are drawn where the INSERT is, not in the block
    ofAttributes.Depth = inner.Depth;
    ofAttributes.Handle = inner.Handle;
    ofAttributes.Layer = inner.Layer;
    ofAttributes.Color = inner.Color;
    BringAttributes(insert, ofAttributes);
    if (place.Depth == 0)
        Note(ImportThing::Block, style, insert.Head.Word(2), CountsText(Made), place);
    if (block->IsEndless)
        Note(ImportThing::Failed, style, insert.Head.Kind,
             "block " + block->Name + " has no ENDBLK; it ends with the next block", place);
}

void DrawingImport::Bring(const SourceEntity& entity, const BlockPlace& place)
{
    ++Visited;
    const std::string& kind = entity.Head.Kind;
    const EntityStyle style = StyleInBlock(entity.Head, place);
    if (IsHidden(entity, style, place))
        return;
    if (kind == "INSERT")
        OpenInsert(entity, style, place);
    else if (kind == "MTEXT")
        BringTexts(entity, style, place);
    else if (kind == "SPLINE" || kind == "ELLIPSE")
        BringCurve(entity, style, place);
    else if (kind == "ATTDEF" && !IsConstantText(entity.Head))
        BringUnknown(entity, place);
    else
        BringFlat(entity, style, place);
}

void DrawingImport::WalkRange(const TextRange& range, const BlockPlace& place)
{
    EntityWalk walk(Text, range);
    SourceEntity entity;
    while (!UserAborted() && walk.Next(entity)) {
        DoEvents();
        Bring(entity, place);
    }
}

void DrawingImport::WalkAll()
{
    Opened = Fitted = 0;
    Visited = 0;
    BlockPlace place;
    place.Map = ShiftedBy(Move);
    WalkRange(Index.Entities, place);
}

void DrawingImport::SettleRings()
{
    for (RingFound& ring : FindRings(Loose, Tolerance, Grid)) {
        const std::size_t first = *std::min_element(ring.Numbers.begin(), ring.Numbers.end());
        for (const std::size_t number : ring.Numbers)
            if (number != first)
                InRings.insert(number);
        Rings.emplace(first, std::move(ring.Circle));
    }
    Loose = {};
}

ImportedDrawing DrawingImport::Run()
{
    Result.HasEntities = Index.Entities.Begin > 0;
    HighestHandle = Index.HighestHandle;
    WalkAll();
    const double millimetre = Panel.Millimetre(Index.Units);
    Tolerance = ImportToleranceMm() * millimetre;
    Grid = 0.01 * millimetre;
    SettleRings();
    Move = Panel.MoveFromBelowZero();
    IsFirstWalk = false;
    if (Form == ImportForm::Reading)
        WriteReadingHead(Writer, Index.Units);
    WalkAll();
    if (Form == ImportForm::Reading)
        WriteReadingFoot(Writer);
    Result.Findings.AddMove(Move);
    Result.Text = std::move(Writer.Written());
    if (Form == ImportForm::Clean)
        Result.Text.Text = CleanDrawing(LayersWritten, Index.Units, HighestHandle, Result.Text.Text);
    return std::move(Result);
}

} // namespace

ImportedDrawing ImportText(std::string_view text, ImportForm form)
{
    return DrawingImport(text, form).Run();
}

} // namespace kv
