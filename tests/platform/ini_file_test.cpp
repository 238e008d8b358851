// Private-profile files: what a read finds, and that a write changes one line and nothing else.
#include "platform/ini_file.h"

#include "platform/scratch_folder.h"

namespace kv {
namespace {

constexpr std::size_t ProfileSize = 80; // 79 characters and the end mark

class IniFile : public ScratchFolder {
  protected:
    std::string Read(std::string_view section, std::string_view key, std::string_view missing = "END.-",
                     std::size_t size = ProfileSize) const
    {
        std::string value;
        EXPECT_TRUE(ReadProfileString(section, key, missing, size, PathOf("shop.ini"), value).Is !=
                    Presence::CannotTell);
        return value;
    }
    bool Write(std::string_view section, std::string_view key, std::string_view value) const
    {
        return WriteProfileString(section, key, value, PathOf("shop.ini")).Ok();
    }
    void Put(const std::string& contents) const { PutFile("shop.ini", contents); }
    std::string Text() const { return FileText("shop.ini"); }
};

TEST_F(IniFile, SectionAndKeyAreFoundWithoutCase)
{
    Put("[ConFiguration]\r\nMetric=Inch\r\nM\xD6"
        "BEL=ja\r\n");
    EXPECT_EQ(Read("Configuration", "METRIC"), "Inch");
    EXPECT_EQ(Read("CONFIGURATION", "m\xF6"
                                    "bel"),
              "ja");
}

TEST_F(IniFile, MissingFileSectionOrKeyGivesTheMissingText)
{
    EXPECT_EQ(Read("A", "k"), "END.-");
    Put("[A]\r\nk=1\r\n[B]\r\nother=2\r\n");
    EXPECT_EQ(Read("C", "k"), "END.-");
    EXPECT_EQ(Read("B", "k"), "END.-"); // the key of another section does not count
    EXPECT_EQ(Read("A", "k"), "1");
    EXPECT_EQ(Read("A", "none", "abcdef", 4), "abc"); // cut alike
}

TEST_F(IniFile, AnEmptyValueIsNotMissing)
{
    Put("[A]\r\nk=\r\nblank=   \r\n");
    EXPECT_EQ(Read("A", "k"), "");
    EXPECT_EQ(Read("A", "blank"), "");
}

TEST_F(IniFile, BlanksAroundTheKeyAndTheValueAreDropped)
{
    Put("  [ A ]  \r\n  k  =  \t two words \t \r\nlast= x ");
    EXPECT_EQ(Read("A", "k"), "two words");
    EXPECT_EQ(Read("A", "last"), "x");
}

TEST_F(IniFile, BlanksAreDroppedBeforeAValueIsCut)
{
    Put("[A]\r\nk=     abcdef     \r\n");
    EXPECT_EQ(Read("A", "k", "", 7), "abcdef");
}

TEST_F(IniFile, TheValueMayHoldEqualSignsAndSemicolons)
{
    Put("[A]\r\nk=a=b;c\r\n");
    EXPECT_EQ(Read("A", "k"), "a=b;c");
}

TEST_F(IniFile, LinesWithASemicolonAreComments)
{
    Put("; [A]\r\n[A]\r\n;k=old\r\n  ;k=older\r\nk=new\r\n");
    EXPECT_EQ(Read("A", "k"), "new");
    EXPECT_EQ(Read("A", ";k"), "END.-");
}

TEST_F(IniFile, ALineWithoutAnEqualSignIsNoKey)
{
    Put("[A]\r\nk\r\nk=1\r\n");
    EXPECT_EQ(Read("A", "k"), "1");
}

TEST_F(IniFile, AKeyBeforeTheFirstSectionIsNobodys)
{
    Put("k=0\r\n[A]\r\nj=1\r\n");
    EXPECT_EQ(Read("A", "k"), "END.-");
    EXPECT_EQ(Read("", "k"), "END.-");
}

TEST_F(IniFile, TheFirstSectionAndTheFirstKeyOfANameWin)
{
    Put("[A]\r\nk=1\r\nk=2\r\n[B]\r\n[A]\r\nk=3\r\nl=4\r\n");
    EXPECT_EQ(Read("A", "k"), "1");
    EXPECT_EQ(Read("A", "l"), "END.-");
}

TEST_F(IniFile, ValuesAreCutAt79Characters)
{
    Put("[A]\r\nlong=" + std::string(100, 'x') + "\r\nfits=" + std::string(79, 'y') + "\r\n");
    EXPECT_EQ(Read("A", "long"), std::string(79, 'x'));
    EXPECT_EQ(Read("A", "fits"), std::string(79, 'y'));
    EXPECT_EQ(Read("A", "fits", "", 1), "");
    EXPECT_EQ(Read("A", "fits", "", 0), "");
}

TEST_F(IniFile, ReadsLfFilesAndALastLineWithoutItsEnd)
{
    Put("[A]\nk=1\nl=2");
    EXPECT_EQ(Read("A", "k"), "1");
    EXPECT_EQ(Read("A", "l"), "2");
}

TEST_F(IniFile, AWriteKeepsEveryOtherByte)
{
    const std::string before = "; shop 7\r\n\r\n[Else]\r\nk = 5\r\nno key here\r\n[A]\r\n ; note\r\n"
                               "first=1\n  K  = old value \r\nlast=\xE4\r\n\r\n[Z]\r\nk=9";
    const std::string after = "; shop 7\r\n\r\n[Else]\r\nk = 5\r\nno key here\r\n[A]\r\n ; note\r\n"
                              "first=1\n  K  =new\r\nlast=\xE4\r\n\r\n[Z]\r\nk=9";
    Put(before);
    EXPECT_TRUE(Write("a", "k", "new"));
    EXPECT_EQ(Text(), after);
    EXPECT_EQ(Names(), std::vector<std::string>{"shop.ini"});
}

TEST_F(IniFile, ANewKeyGoesBehindTheLastLineOfItsSection)
{
    Put("[A]\r\nk=1\r\n; end of A\r\n\r\n[B]\r\nk=2\r\n");
    EXPECT_TRUE(Write("A", "new", " 1"));
    EXPECT_EQ(Text(), "[A]\r\nk=1\r\n; end of A\r\nnew= 1\r\n\r\n[B]\r\nk=2\r\n");
    EXPECT_TRUE(Write("B", "new", "x"));
    EXPECT_EQ(Text(), "[A]\r\nk=1\r\n; end of A\r\nnew= 1\r\n\r\n[B]\r\nk=2\r\nnew=x\r\n");
}

TEST_F(IniFile, ANewKeyOfAnEmptySectionStandsUnderItsName)
{
    Put("[A]\r\n\r\n[B]\r\n");
    EXPECT_TRUE(Write("A", "k", "1"));
    EXPECT_EQ(Text(), "[A]\r\nk=1\r\n\r\n[B]\r\n");
}

TEST_F(IniFile, ANewSectionGoesToTheEndBehindABlankLine)
{
    Put("[A]\r\nk=1\r\n");
    EXPECT_TRUE(Write("B", "k", "2"));
    EXPECT_EQ(Text(), "[A]\r\nk=1\r\n\r\n[B]\r\nk=2\r\n");
    Put("[A]\r\nk=1\r\n\r\n");
    EXPECT_TRUE(Write("B", "k", "2"));
    EXPECT_EQ(Text(), "[A]\r\nk=1\r\n\r\n[B]\r\nk=2\r\n");
}

TEST_F(IniFile, NewLinesTakeTheLineEndsOfTheFile)
{
    Put("[A]\nk=1\n");
    EXPECT_TRUE(Write("A", "l", "2"));
    EXPECT_TRUE(Write("B", "k", "3"));
    EXPECT_EQ(Text(), "[A]\nk=1\nl=2\n\n[B]\nk=3\n");
}

TEST_F(IniFile, ALastLineWithoutItsEndGetsOneBeforeANewLine)
{
    Put("[A]\r\nk=1");
    EXPECT_TRUE(Write("A", "l", "2"));
    EXPECT_EQ(Text(), "[A]\r\nk=1\r\nl=2\r\n");
    Put("[A]\nk=1");
    EXPECT_TRUE(Write("B", "k", "2"));
    EXPECT_EQ(Text(), "[A]\nk=1\n\n[B]\nk=2\n");
}

TEST_F(IniFile, AMissingOrEmptyFileIsMadeWithCrLf)
{
    EXPECT_TRUE(Write("A", "k", "1"));
    EXPECT_EQ(Text(), "[A]\r\nk=1\r\n");
    Put("");
    EXPECT_TRUE(Write("A", "k", "1"));
    EXPECT_EQ(Text(), "[A]\r\nk=1\r\n");
}

TEST_F(IniFile, LeadingBlanksOfANumberDoNotGrowWithEachWrite)
{
    Put("[A]\r\nk= 0\r\n");
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(Write("A", "k", " 1"));
    EXPECT_EQ(Text(), "[A]\r\nk= 1\r\n");
    EXPECT_EQ(Read("A", "k"), "1");
}

TEST_F(IniFile, AValueIsOneLine)
{
    EXPECT_TRUE(Write("A", "k", "one\r\n[B]\r\nk=2"));
    EXPECT_EQ(Text(), "[A]\r\nk=one\r\n");
}

TEST_F(IniFile, AFileThatCannotBeMadeIsTold)
{
    EXPECT_FALSE(WriteProfileString("A", "k", "1", PathOf("none\\shop.ini")).Ok());
    std::filesystem::create_directory(Folder / "shop.ini");
    EXPECT_FALSE(Write("A", "k", "1"));
    EXPECT_EQ(Names(), std::vector<std::string>{"shop.ini"});
}

} // namespace
} // namespace kv
