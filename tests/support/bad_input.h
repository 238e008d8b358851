// Jobs that must fail and leave the process fit: the report is held against one line, the next drawing's
// program against the one of a process that has done nothing else.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>

#include <pwd.h>
#include <sys/wait.h>
#include <unistd.h>

#include "job/job_driver.h"
#include "platform/clock.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/report.h"
#include "state/run.h"
#include "support/dxf.h"
#include "support/scene.h"

namespace kv::test {

namespace fs = std::filesystem;

inline const std::string SectionHead = "0\nSECTION\n2\nENTITIES\n";
inline const std::string GoodDrawing =
    Drawing(Rectangle("BORDER", 10, 20, 600, 400) + Circle("VBORE Z12", 110, 70, 4) +
            Line("GROOVE D8Z6T18", 20, 60, 500, 60));

class BadInput : public testing::Test {
  protected:
    RunBlock& Run = kv::Run; // the test class has a Run of its own
    Scene Home;

    void SetUp() override
    {
        Clock.TodayMmDdYy = [] { return std::string("07/04/26"); };
        Clock.SecondsSinceMidnight = [] { return 1000.0; };
    }

    std::string Place(const std::string& name = "BAD.DXF") const { return (Home.Folder / name).string(); }

    // Runs a job on what stands there already.
    bool Process(const std::string& name)
    {
        Home.Lines.clear();
        Home.Boxes.clear();
        Run.RunFailed = False;
        std::string job = FromHostPath(Place(name));
        ProcessDrawingFile(job);
        ReportMessage(2, "");
        return Run.RunFailed == False;
    }

    // The whole report behind the job's name is the file and the cause, on one line; before it at most what
    // the passes up to there have doubted.
    void ExpectOneLine(const std::string& cause, const std::vector<std::string>& doubts = {}) const
    {
        std::vector<std::string> lines = {"BAD"};
        lines.insert(lines.end(), doubts.begin(), doubts.end());
        lines.push_back(Place() + ": " + cause);
        EXPECT_EQ(Home.Lines, lines);
        ExpectListed();
    }
    void ExpectListed() const
    {
        EXPECT_EQ(kv::Run.RunFailed, True);
        EXPECT_EQ(kv::Run.FailedFiles, (std::vector<std::string>{"", FromHostPath(Place())}))
            << Home.ReportText();
    }
    void ExpectRefused(const std::string& drawing, const std::string& cause,
                       const std::vector<std::string>& doubts = {})
    {
        EXPECT_FALSE(Home.Convert(drawing, "BAD.DXF"));
        ExpectOneLine(cause, doubts);
        ExpectFit();
    }

    // The next drawing gives, byte for byte, what it gives in a process that has done nothing else.
    void ExpectFit()
    {
        EXPECT_EQ(Entities.Last(), 0) << "the arrays are emptied";
        EXPECT_TRUE(Home.Convert(GoodDrawing, "NEXT.DXF")) << Home.ReportText();
        EXPECT_EQ(Home.Read(Home.Programs / "SRG" / "N" / "EXT"), FreshProgram());
        EXPECT_FALSE(fs::exists(Home.Programs / "SRG" / "B" / "AD")) << "a bad drawing gives no program";
        ExpectNoStrays();
    }
    // Neither copies written aside nor copies with repaired line ends.
    void ExpectNoStrays() const
    {
        for (const auto& entry : fs::recursive_directory_iterator(Home.Folder)) {
            EXPECT_NE(entry.path().extension(), ".tmp") << entry.path().filename();
            EXPECT_NE(UpperCase(entry.path().filename().string()), "MACTEMP.DXF");
        }
    }

    static const std::string& FreshProgram()
    {
        static const std::string program = MakeFreshProgram();
        return program;
    }
    // In a child of its own, so that nothing that this process has done can show.
    static std::string MakeFreshProgram()
    {
        int ends[2];
        if (::pipe(ends) != 0)
            return "no pipe";
        const pid_t child = ::fork();
        if (child == 0) {
            std::string program;
            {
                Scene scene;
                scene.Convert(GoodDrawing, "NEXT.DXF");
                program = scene.Read(scene.Programs / "SRG" / "N" / "EXT");
            }
            const bool whole =
                ::write(ends[1], program.data(), program.size()) == static_cast<ssize_t>(program.size());
            ::_exit(whole ? 0 : 1);
        }
        ::close(ends[1]);
        std::string program;
        char piece[4096];
        for (ssize_t got = 0; (got = ::read(ends[0], piece, sizeof piece)) > 0;)
            program.append(piece, static_cast<std::size_t>(got));
        ::close(ends[0]);
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
        EXPECT_FALSE(program.empty());
        return program;
    }
};

// Runs `work` in a child; 0 when it returns true and no expectation failed in it.
inline int InChild(const std::function<bool()>& work)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work() && !testing::Test::HasFailure() ? 0 : 1);
    int status = -1;
    ::waitpid(child, &status, 0);
    return status;
}

inline void GiveUpRights()
{
    if (::getuid() != 0)
        return;
    const passwd* const nobody = ::getpwnam("nobody");
    if (nobody == nullptr || ::setgid(nobody->pw_gid) != 0 || ::setuid(nobody->pw_uid) != 0)
        ::_exit(99);
}

} // namespace kv::test
