// Shop notes: where they go, and how they go into what an operator wrote.
#include "writers/cnc/notes.h"

#include "writers/program_scene.h"

namespace kv {
namespace {

const std::string Begin = "--- Begin CAD Notes ---";
const std::string End = "--- End CAD Notes ---";

class NotesFile : public ProgramScene {
  protected:
    void SetUp() override
    {
        ProgramScene::SetUp();
        Put("CNC/Sorg/INDICE.PRG", "");
        Config.DestinationPath90 = PathOf("CNC\\Sorg\\");
    }
    void WriteNoted(const Texts& notes, const std::string& name = "DOOR")
    {
        NewDrawing(name);
        Run.CncNotes = {""};
        Run.CncNotes.insert(Run.CncNotes.end(), notes.begin(), notes.end());
        AddBore();
        WriteCncProgram();
    }
    void ConvertOver(const std::string& old, const Texts& notes)
    {
        Put("CNC/NOTE/NOC/D/OOR", old);
        WriteNoted(notes);
    }
    std::string Noted() { return Get("CNC/NOTE/NOC/D/OOR"); }
};

TEST_F(NotesFile, ANewOneBeginsWithAnEmptyLine)
{
    WriteNoted({"Turn the part", "Clamp left"});
    EXPECT_EQ(Noted(), FileOf({"", "Turn the part", "Clamp left"}));
    EXPECT_TRUE(std::filesystem::is_directory(Folder / "CNC/NOTE/SPC"));
    EXPECT_TRUE(Stands("CNC/Sorg/SRG/D/OOR"));
}

TEST_F(NotesFile, ADrawingWithoutNotesMakesNone)
{
    WriteNoted({});
    EXPECT_FALSE(Stands("CNC/NOTE"));
}

TEST_F(NotesFile, LongAndShortNamesHaveTheProgramsPlace)
{
    WriteNoted({"A"}, "PANEL1234567");
    WriteNoted({"A"}, "P");
    EXPECT_TRUE(Stands("CNC/NOTE/NOC/P/ANEL1234.567"));
    EXPECT_TRUE(Stands("CNC/NOTE/NOC/00/P"));
}

TEST_F(NotesFile, WithoutMarkersTheNotesGoBehindTheOldText)
{
    ConvertOver(FileOf({"OWN 1", "OWN 2"}), {"A", "B"});
    EXPECT_EQ(Noted(), FileOf({"OWN 1", "OWN 2", Begin, "A", "B"}));
}

TEST_F(NotesFile, ALastLineWithoutLineEndIsNotLost)
{
    ConvertOver("OWN 1\r\nOWN 2", {"A"});
    EXPECT_EQ(Noted(), FileOf({"OWN 1", "OWN 2", Begin, "A"}));
}

TEST_F(NotesFile, AnEmptyFileTakesTheHeadLineAndTheNotes)
{
    ConvertOver("", {"A"});
    EXPECT_EQ(Noted(), FileOf({Begin, "A"}));
}

TEST_F(NotesFile, BehindABeginMarkerTheNotesAreReplaced)
{
    ConvertOver(FileOf({"OWN", Begin, "A", "B"}), {"X"});
    EXPECT_EQ(Noted(), FileOf({"OWN", Begin, "X", ""}));
}

TEST_F(NotesFile, MoreNotesThanBeforeFitBehindTheBeginMarker)
{
    ConvertOver(FileOf({"OWN", Begin, "A"}), {"X", "Y", "Z"});
    EXPECT_EQ(Noted(), FileOf({"OWN", Begin, "X", "Y", "Z"}));
}

TEST_F(NotesFile, TextBehindTheEndMarkerStays)
{
    const std::string old = FileOf({"OWN", Begin, "A", "B", End, "TAIL 1", "TAIL 2"});
    ConvertOver(old, {"X"});
    EXPECT_EQ(Noted(), FileOf({"OWN", Begin, "X", End, "TAIL 1", "TAIL 2"}));
    ConvertOver(old, {"X", "Y"});
    EXPECT_EQ(Noted(), FileOf({"OWN", Begin, "X", "Y", End, "TAIL 1", "TAIL 2"}));
    ConvertOver(old, {"X", "Y", "Z", "W"});
    EXPECT_EQ(Noted(), FileOf({"OWN", Begin, "X", "Y", "Z", "W", End, "TAIL 1", "TAIL 2"}));
}

TEST_F(NotesFile, MarkersAreFoundInAnyCaseAndTheLastOnesCount)
{
    ConvertOver(FileOf({"begin cad notes", "OWN", "xx BEGIN cad NOTES xx", "A", "end cad notes", "T"}),
                {"X"});
    EXPECT_EQ(Noted(),
              FileOf({"begin cad notes", "OWN", "xx BEGIN cad NOTES xx", "X", "end cad notes", "T"}));
}

TEST_F(NotesFile, WithAnEndMarkerAloneTheNotesGoInFrontOfIt)
{
    ConvertOver(FileOf({"OWN", End, "TAIL"}), {"A"});
    EXPECT_EQ(Noted(), FileOf({"OWN", Begin, "A", End, "TAIL"}));
}

TEST_F(NotesFile, RepeatingAConversionAddsTheMarkerOnceAndNoLineEachTime)
{
    WriteNoted({"A"});
    WriteNoted({"A"});
    EXPECT_EQ(Noted(), FileOf({"", "A", Begin, "A"}));
    // What stands behind the last line end comes along once.
    for (int again = 0; again < 3; ++again) {
        WriteNoted({"A"});
        EXPECT_EQ(Noted(), FileOf({"", "A", Begin, "A", ""})) << again;
    }
    const std::string marked = FileOf({"OWN", Begin, "A", "B", End, "TAIL"});
    ConvertOver(marked, {"A", "B"});
    EXPECT_EQ(Noted(), marked);
}

TEST_F(NotesFile, WithoutANotesRootTheOperatorIsToldAndTheProgramIsWritten)
{
    Config.DestinationPath90 = PathOf("PROG\\");
    WriteNoted({"A"});
    EXPECT_EQ(Reported(), (Texts{"Processed in 2.5 Sec.", "CNC NOTES found in drawing",
                                 "Environment Variable DIRNOT Not Found.", "CNC NOTES NOT SAVED",
                                 "CNC90/WINNER90", "CONVERSION COMPLETED.  4 Lines"}));
    EXPECT_TRUE(Stands("PROG/SRG/D/OOR"));
}

TEST_F(NotesFile, NotesThatCannotBeWrittenLeaveIndexAndProgramAsTheyWere)
{
    std::filesystem::create_directories(Folder / "CNC/NOTE/NOC/D/OOR");
    WriteNoted({"A"});
    EXPECT_EQ(Reported()[1], "Unable to Process file. 75");
    EXPECT_EQ(Run.RunFailed, True);
    EXPECT_EQ(AllFiles(), (Texts{"CNC/Sorg/INDICE.PRG", "PROG/INDICE.PRG"}));
    EXPECT_EQ(Get("CNC/Sorg/INDICE.PRG"), "");
}

} // namespace
} // namespace kv
