// Files that another program holds, for a moment and for ever; places that cannot be written or are gone;
// paths of any length. Each must succeed or say clearly why not.
#include "platform/files.h"

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>

#include <windows.h>
// That header renames functions of ours.
#undef DeleteFile
#undef ReplaceFile
// Beside it, as the lean one leaves it out.
#include <sddl.h>

#include "platform/directory.h"
#include "platform/events.h"
#include "platform/run_error.h"
#include "platform/scratch_folder.h"
#include "platform/stand_ins.h"
#include "support/answers.h"

namespace kv {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

constexpr const char* InUse = "in use by another program";
constexpr DWORD SharedWithNobody = 0;

// A file that is open elsewhere, until Close or for so long.
struct Held {
    Held(const std::filesystem::path& file, DWORD access, DWORD shared)
        : Open(CreateFileW(file.c_str(), access, shared, nullptr, OPEN_EXISTING, 0, nullptr))
    {
        EXPECT_NE(Open, INVALID_HANDLE_VALUE);
    }
    void CloseAfter(std::chrono::milliseconds time)
    {
        Closing = std::thread([this, time] {
            std::this_thread::sleep_for(time);
            CloseHandle(Open);
        });
    }
    ~Held()
    {
        if (Closing.joinable())
            Closing.join();
        else
            CloseHandle(Open);
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

    HANDLE Open;
    std::thread Closing;
};

// In the system's text form.
std::string RightsOf(const std::filesystem::path& file)
{
    std::array<char, 4096> rights{};
    DWORD length = 0;
    char* text = nullptr;
    EXPECT_NE(GetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, rights.data(),
                               static_cast<DWORD>(rights.size()), &length),
              0);
    EXPECT_NE(ConvertSecurityDescriptorToStringSecurityDescriptorA(rights.data(), SDDL_REVISION_1,
                                                                   DACL_SECURITY_INFORMATION, &text, nullptr),
              0);
    const std::string found = text != nullptr ? text : "";
    LocalFree(text);
    return found;
}

class WindowsFiles : public ScratchFolder {
  protected:
    void SetUp() override
    {
        ScratchFolder::SetUp();
        PutFile("program", "old");
    }
    static double SecondsOf(const std::function<void()>& work)
    {
        const auto start = steady_clock::now();
        work();
        return std::chrono::duration<double>(steady_clock::now() - start).count();
    }
    std::filesystem::path Program() const { return Folder / "program"; }
};

TEST_F(WindowsFiles, OneThatIsHeldForASecondIsReplacedAfterwards)
{
    Held held(Program(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
    held.CloseAfter(1s);
    FileOutcome outcome;
    const double seconds = SecondsOf([&] { outcome = ReplaceFile(PathOf("program"), "new"); });
    EXPECT_TRUE(outcome.Ok()) << outcome.Cause;
    EXPECT_EQ(FileText("program"), "new");
    EXPECT_GE(seconds, 0.9);
    EXPECT_EQ(Names(), std::vector<std::string>{"program"});
}

TEST_F(WindowsFiles, OneThatIsHeldForEverIsToldAndLeftAsItWas)
{
    FileOutcome outcome;
    double seconds = 0;
    {
        const Held held(Program(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
        seconds = SecondsOf([&] { outcome = ReplaceFile(PathOf("program"), "new"); });
    }
    EXPECT_EQ(outcome.Number, ErrorPermission);
    EXPECT_EQ(outcome.Cause, InUse);
    EXPECT_EQ(FileText("program"), "old");
    EXPECT_EQ(Names(), std::vector<std::string>{"program"}) << "the copy aside is gone";
    EXPECT_GE(seconds, 1.9);
    EXPECT_LE(seconds, 4.0);
}

TEST_F(WindowsFiles, OneThatIsHeldForAMomentIsReadDeletedAndRenamed)
{
    const auto hold = [&](const std::function<FileOutcome()>& work) {
        PutFile("program", "old");
        Held held(Program(), GENERIC_READ | GENERIC_WRITE, SharedWithNobody);
        held.CloseAfter(300ms);
        const FileOutcome outcome = work();
        EXPECT_TRUE(outcome.Ok()) << outcome.Cause;
    };
    std::string contents;
    hold([&] { return ReadWholeFile(PathOf("program"), contents); });
    EXPECT_EQ(contents, "old");
    hold([&] { return CheckWritable(PathOf("program")); });
    hold([&] { return RenameFile(PathOf("program"), PathOf("other")); });
    EXPECT_EQ(Names(), std::vector<std::string>{"other"});
    hold([&] { return DeleteFile(PathOf("program")); });
    EXPECT_EQ(Names(), std::vector<std::string>{"other"});
}

TEST_F(WindowsFiles, OneThatIsHeldForEverIsNeitherReadDeletedNorRenamed)
{
    const Held held(Program(), GENERIC_READ | GENERIC_WRITE, SharedWithNobody);
    std::string contents;
    const FileOutcome outcomes[] = {ReadWholeFile(PathOf("program"), contents),
                                    CheckWritable(PathOf("program")), DeleteFile(PathOf("program")),
                                    RenameFile(PathOf("program"), PathOf("other"))};
    for (const FileOutcome& outcome : outcomes) {
        EXPECT_EQ(outcome.Number, ErrorPermission);
        EXPECT_EQ(outcome.Cause, InUse);
    }
    EXPECT_EQ(Names(), std::vector<std::string>{"program"});
}

int PumpsOfWait = 0;

TEST_F(WindowsFiles, EventsRunWhileOneIsWaitedFor)
{
    Held held(Program(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
    held.CloseAfter(500ms);
    Events.Pump = [] { ++PumpsOfWait; };
    EXPECT_TRUE(ReplaceFile(PathOf("program"), "new").Ok());
    Events.Pump = nullptr;
    EXPECT_GE(PumpsOfWait, 20); // a window answers at least each 25 ms
}

TEST_F(WindowsFiles, ACopyThatAScannerHoldsIsMovedOrTakenAwayAfterwards)
{
    const auto hold = [&](const StagedFile& staged) {
        auto held = std::make_unique<Held>(staged.Aside, GENERIC_READ, FILE_SHARE_READ);
        held->CloseAfter(300ms);
        return held;
    };
    StagedFile staged;
    ASSERT_TRUE(StageFile(PathOf("program"), "new", staged).Ok());
    auto held = hold(staged);
    EXPECT_TRUE(MoveStaged(staged).Ok());
    EXPECT_EQ(FileText("program"), "new");
    ASSERT_TRUE(StageFile(PathOf("program"), "newer", staged).Ok());
    held = hold(staged);
    DropStaged(staged);
    EXPECT_EQ(FileText("program"), "new");
    EXPECT_EQ(Names(), std::vector<std::string>{"program"});
}

TEST_F(WindowsFiles, AReaderThatSharesAllDelaysAReplacementAtMost)
{
    Held held(Program(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
    held.CloseAfter(300ms);
    EXPECT_TRUE(ReplaceFile(PathOf("program"), "new").Ok());
    EXPECT_EQ(FileText("program"), "new");
}

TEST_F(WindowsFiles, OneThatIsSetReadOnlyStaysAndIsToldAtOnce)
{
    SetFileAttributesW(Program().c_str(), FILE_ATTRIBUTE_READONLY);
    FileOutcome outcome;
    EXPECT_LT(SecondsOf([&] { outcome = ReplaceFile(PathOf("program"), "new"); }), 1.0);
    EXPECT_EQ(outcome.Number, ErrorPermission);
    EXPECT_NE(outcome.Cause, "");
    EXPECT_NE(outcome.Cause, InUse);
    EXPECT_EQ(CheckWritable(PathOf("program")).Number, ErrorPermission);
    SetFileAttributesW(Program().c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(FileText("program"), "old");
}

TEST_F(WindowsFiles, AReplacedOneKeepsItsAttributes)
{
    SetFileAttributesW(Program().c_str(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_TRUE(ReplaceFile(PathOf("program"), "new").Ok());
    EXPECT_NE(GetFileAttributesW(Program().c_str()) & FILE_ATTRIBUTE_HIDDEN, 0U);
    EXPECT_EQ(FileText("program"), "new");
}

TEST_F(WindowsFiles, AReplacedOneKeepsTheRightsThatWereGivenToIt)
{
    PutFile("index", "old");
    PutFile("other", "old");
    PSECURITY_DESCRIPTOR everybody = nullptr;
    ASSERT_NE(ConvertStringSecurityDescriptorToSecurityDescriptorA("D:(A;;FA;;;WD)", SDDL_REVISION_1,
                                                                   &everybody, nullptr),
              0);
    const std::filesystem::path index = Folder / "index";
    ASSERT_NE(SetFileSecurityW(index.c_str(), DACL_SECURITY_INFORMATION, everybody), 0);
    LocalFree(everybody);
    const std::string given = RightsOf(index);
    ASSERT_NE(given, RightsOf(Folder / "other"));
    ASSERT_TRUE(ReplaceFile(PathOf("index"), "new").Ok());
    EXPECT_EQ(FileText("index"), "new");
    EXPECT_EQ(RightsOf(index), given);
}

TEST_F(WindowsFiles, AFolderThatTakesNoFilesIsToldAtOnce)
{
    constexpr const char* sealed = "Z:\\sys\\kernel\\"; // of the build machine: closed to everybody
    if (!test::FolderStands(sealed))
        GTEST_SKIP() << "not on a machine that runs these programs for another system";
    FileOutcome outcome;
    EXPECT_LT(SecondsOf([&] { outcome = ReplaceFile(std::string(sealed) + "program", "new"); }), 1.0);
    EXPECT_EQ(outcome.Number, ErrorPermission);
    EXPECT_NE(outcome.Cause, "");
    EXPECT_EQ(MakeFolder(std::string(sealed) + "programs").Number, ErrorPermission);
}

// A letter that no drive has.
std::string GoneDrive()
{
    const DWORD drives = GetLogicalDrives();
    for (char letter = 'Y'; letter > 'C'; --letter) {
        if ((drives >> (letter - 'A') & 1U) == 0)
            return std::string(1, letter) + ":";
    }
    return {};
}

TEST_F(WindowsFiles, ADriveThatIsGoneIsAPathThatIsNotThere)
{
    const std::string drive = GoneDrive();
    ASSERT_NE(drive, "");
    std::string contents;
    EXPECT_FALSE(test::DriveStands(drive + "\\dxf\\"));
    EXPECT_FALSE(test::FolderStands(drive + "\\"));
    EXPECT_EQ(test::Counted(drive + "\\dxf\\*.DXF"), 0);
    for (const FileOutcome& outcome :
         {ReadWholeFile(drive + "\\a.dxf", contents), ReplaceFile(drive + "\\a", "x"),
          MakeFolders(drive + "\\dxf\\new"), RenameFile(drive + "\\a", drive + "\\b")}) {
        EXPECT_EQ(outcome.Number, ErrorPathNotFound);
        EXPECT_NE(outcome.Cause, "");
    }
    EXPECT_TRUE(DeleteFile(drive + "\\a").Ok()); // it is not there
}

TEST_F(WindowsFiles, ANetworkPathThatNobodyServesIsTold)
{
    const std::string share = "\\\\no-such-machine\\dxf\\";
    std::string contents;
    Long count = 1;
    EXPECT_TRUE(AskFolder(share).Is != Presence::There);
    EXPECT_TRUE(FCount(share + "*.DXF", count).Is != Presence::There);
    EXPECT_EQ(count, 0);
    for (const FileOutcome& outcome :
         {ReadWholeFile(share + "a.dxf", contents), ReplaceFile(share + "a", "x")}) {
        EXPECT_EQ(outcome.Number, ErrorPathNotFound);
        EXPECT_NE(outcome.Cause, "");
    }
}

TEST_F(WindowsFiles, APathOf300CharactersIsUsedAndNotCut)
{
    std::string folder = PathOf("");
    while (folder.size() < 290)
        folder += "a-folder-of-twenty-c\\";
    ASSERT_TRUE(MakeFolders(folder).Ok());
    const std::string path = folder + "program.dxf";
    ASSERT_GT(path.size(), 300U);
    EXPECT_TRUE(ReplaceFile(path, "first").Ok());
    EXPECT_TRUE(ReplaceFile(path, "second").Ok());
    std::string contents;
    EXPECT_TRUE(ReadWholeFile(path, contents).Ok());
    EXPECT_EQ(contents, "second");
    EXPECT_TRUE(test::FileStands(path));
    EXPECT_EQ(test::StampOf(path).Size, 6U);
    EXPECT_EQ(test::Counted(folder + "*.DXF"), 1);
    EXPECT_TRUE(CheckWritable(path).Ok());
    EXPECT_TRUE(RenameFile(path, folder + "other.dxf").Ok());
    EXPECT_FALSE(test::FileStands(path));
    EXPECT_TRUE(DeleteFile(folder + "other.dxf").Ok());
    EXPECT_EQ(test::Counted(folder + "*"), 0);
    const std::string cut = path.substr(0, MAX_PATH - 1);
    EXPECT_FALSE(test::FileStands(cut));
    // The library's own removal knows no such paths.
    while (folder.size() > PathOf("").size()) {
        folder.pop_back();
        RemoveDirectoryW((L"\\\\?\\" + std::wstring(folder.begin(), folder.end())).c_str());
        folder = FolderOf(folder);
    }
}

TEST_F(WindowsFiles, ANameOf300CharactersIsTooLongAndTold)
{
    const std::string path = PathOf(std::string(300, 'n'));
    const FileOutcome outcome = ReplaceFile(path, "x");
    // The copy aside can be made, its last place cannot.
    EXPECT_EQ(outcome.Number, ErrorPathNotFound);
    EXPECT_NE(outcome.Cause, "");
    EXPECT_EQ(Names(), std::vector<std::string>{"program"});
}

TEST_F(WindowsFiles, NamesInAnsiLettersComeBack)
{
    const std::string name = "T\xFCr \xDF \x80.dxf"; // an umlaut, a sharp s, the euro sign
    EXPECT_TRUE(ReplaceFile(PathOf("") + name, "x").Ok());
    EXPECT_TRUE(std::filesystem::exists(Folder / L"T\u00FCr \u00DF \u20AC.dxf"));
    EXPECT_TRUE(test::FileStands(PathOf("") + "T\xDCR \xDF \x80.DXF")) << "whatever the case";
    std::vector<DirectoryEntry> entries;
    EXPECT_TRUE(ReadFileX(PathOf("") + "*.dxf", 10, entries).Is != Presence::CannotTell);
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].LongName, name);
}

TEST_F(WindowsFiles, ANameThatAnsiDoesNotHoldGoesUnderItsStandIn)
{
    std::ofstream(Folder / L"\u0434.dxf", std::ios::binary) << "x"; // Cyrillic
    EXPECT_EQ(test::Counted(PathOf("") + "*.dxf"), 1);
    std::vector<DirectoryEntry> entries;
    EXPECT_EQ(ReadFileX(PathOf("") + "*.dxf", 10, entries).Is, Presence::There);
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].LongName, "d~9BC37E61.dxf");
    std::string contents;
    EXPECT_TRUE(ReadWholeFile(PathOf("") + entries[0].LongName, contents).Ok());
    EXPECT_EQ(contents, "x");
    EXPECT_EQ(ReadWholeFile(PathOf("") + "?.dxf", contents).Number, ErrorPathNotFound);
}

TEST_F(WindowsFiles, FoldersOfAnyNameAreReachedHoweverLongThePath)
{
    std::string path = PathOf("");
    for (int i = 0; i < 3; ++i) { // beyond 220 characters
        path += PathFromUtf8("\xD0\xBA\xD0\xB0\xD1\x82\xD0\xB0\xD0\xBB\xD0\xBE\xD0\xB3" +
                             std::string(40, 'x') + "\\");
    }
    EXPECT_TRUE(MakeFolders(path).Ok());
    EXPECT_TRUE(ReplaceFile(path + "a.dxf", "x").Ok());
    EXPECT_EQ(test::Counted(path + "*.dxf"), 1);
}

TEST_F(WindowsFiles, WrittenFilesAreToldInHostText)
{
    std::vector<std::string> written;
    WrittenFiles = &written;
    EXPECT_TRUE(ReplaceFile(PathOf("") + "T\xFCr", "x").Ok());
    WrittenFiles = nullptr;
    ASSERT_EQ(written.size(), 1U);
    EXPECT_TRUE(written[0].ends_with("T\xC3\xBCr")) << written[0];
}

} // namespace
} // namespace kv
