// Drawings whose names CP1252 does not hold, in the list of the window and in batches.
#include "platform/stand_ins.h"

#include "platform/text.h"
#include "shell/file_list_scene.h"
#include "shell/unattended.h"

namespace kv {
namespace {

std::filesystem::path Utf8Path(const std::string& utf8)
{
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

Names Real(const Names& inside)
{
    Names real;
    for (const std::string& name : inside)
        real.push_back(Utf8FromAnsi(name));
    return real;
}

class ForeignDrawings : public FileListScene {
  protected:
    void PutForeign(const std::string& utf8) const { std::ofstream(Source("dxf") / Utf8Path(utf8)) << 'x'; }
    bool Stands(const std::string& utf8) const
    {
        return std::filesystem::exists(Source("dxf") / Utf8Path(utf8));
    }
};

TEST_F(ForeignDrawings, AreListedByTheirNearestLettersUnderTheirOwnNames)
{
    PutDrawing("e.dxf");
    PutForeign("Żak.dxf");
    PutForeign("дверь.dxf");
    PutForeign("扉.dxf");
    PutForeign("notes д.txt");
    RefreshFileList();
    EXPECT_EQ(Real(Column(2)), (Texts{"дверь.dxf", "e.dxf", "Żak.dxf", "扉.dxf"}));
    EXPECT_TRUE(Lines.empty());
}

TEST_F(ForeignDrawings, AreDeletedAndNoOthers)
{
    PutForeign("дверь.dxf");
    PutForeign("двёрь.dxf"); // of the same nearest letters
    RefreshFileList();
    ASSERT_EQ(Column(2).size(), 2U);
    Select(NameFromUtf8("дверь.dxf"));
    Answer = true;
    PopupDelete();
    RefreshFileList();
    EXPECT_FALSE(Stands("дверь.dxf"));
    EXPECT_TRUE(Stands("двёрь.dxf"));
}

class ForeignBatch : public Unattended {
  protected:
    void SetUp() override
    {
        Unattended::SetUp();
        Config.AutoStartBatch = true;
        for (const char* const name : {"дверь.dxf", "扉.dxf", "Tür.dxf"})
            std::ofstream(Source() / Utf8Path(name), std::ios::binary) << BoredPanel();
        WarmUp();
    }
    void RunBatch(const std::string& lines)
    {
        Put("BATCH.LST", lines);
        Tick();
    }
};

TEST_F(ForeignBatch, AListInUtf8NamesThem)
{
    RunBatch("\xEF\xBB\xBFдверь.dxf\r\n\"扉.dxf\"\r\nTür\r\nдверь^FRONT\r\n");
    EXPECT_TRUE(Here.HasProgram("DVER")) << Here.ReportText();
    EXPECT_TRUE(Here.HasProgram("B0D9ADBB"));
    EXPECT_TRUE(Here.HasProgram("FRONT"));
    EXPECT_EQ(TextOf("PROC.LST"), "DVER\r\nB0D9ADBB\r\nT\xDCR\r\nFRONT\r\n");
    EXPECT_EQ(Shell.FailedJobs, 0);
}

TEST_F(ForeignBatch, ALineWithBlanksInItsPathsIsPartedAtTheMark)
{
    std::filesystem::create_directories(Source() / Utf8Path("мои двери"));
    std::ofstream(Source() / Utf8Path("мои двери/левая дверь.dxf"), std::ios::binary) << BoredPanel();
    const std::u8string folder = Source().u8string();
    RunBatch('"' + std::string(folder.begin(), folder.end()) + "мои двери\\левая дверь.dxf\" ^ ключ\r\n");
    EXPECT_TRUE(Here.HasProgram("KLYUCH")) << Here.ReportText();
}

TEST_F(ForeignBatch, AListInTheCodePageIsReadAsEver)
{
    RunBatch("t\xFCr.dxf\r\n");
    EXPECT_EQ(Shell.FailedJobs, 0) << Here.ReportText();
    EXPECT_EQ(TextOf("PROC.LST"), "T\xDCR\r\n");
}

} // namespace
} // namespace kv
