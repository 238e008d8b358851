// Real processes that convert into one installation at the same time.
#include <set>

#include <sys/types.h>

#include "console/console_run.h"

namespace console_test {
namespace {

class TwoProcesses : public Console {
  protected:
    static constexpr int Drawings = 100;

    void SetUp() override
    {
        Console::SetUp();
        std::ofstream settings(Folder / "home/KV90.INI", std::ios::binary | std::ios::app);
        settings << "[PTSDATA]\r\nPath=" << (Folder / "").string() << "\r\nName=LIST\r\nField1=NAME\r\n";
        settings.close();
        for (const char letter : {'A', 'B'}) {
            for (int i = 0; i < Drawings; ++i)
                Put(Folder / Name(letter, i), BoredPanel("0\nTEXT\n8\nI\n10\n0\n20\n0\n1\nPOST INSTRUCTIONS\n"
                                                         "0\nTEXT\n8\nI\n10\n0\n20\n0\n1\nPTS NAME=" +
                                                         Name(letter, i) + "\n"));
        }
    }
    static std::string Name(char letter, int i) { return letter + std::to_string(100 + i) + ".DXF"; }
    // Without waiting for its end.
    pid_t StartCall(const Words& words) const
    {
        const pid_t child = ::fork();
        if (child == 0) {
            ::dup2(::open((Folder / "output").c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600), 1);
            ::dup2(1, 2);
            Become(Folder, Call(words), {});
        }
        return child;
    }
    Words ListOf(char letter) const
    {
        Words words = {"convert"};
        for (int i = 0; i < Drawings; ++i)
            words.push_back(Name(letter, i));
        return words;
    }
    void ExpectAll(const std::string& how) const
    {
        const std::string index = Contents(Folder / "programs/INDICE.PRG");
        EXPECT_EQ(index.size(), 2U * Drawings * 82) << how;
        const std::string list = Contents(Folder / "LIST.PTS");
        for (const char letter : {'A', 'B'}) {
            for (int i = 0; i < Drawings; ++i) {
                const std::string name = Name(letter, i);
                const std::string digits = name.substr(1, 3);
                EXPECT_TRUE(fs::exists(Folder / "programs/SRG" / std::string(1, letter) / digits)) << name;
                EXPECT_TRUE(Holds(index, name.substr(0, 4) + "        ")) << name << how;
                EXPECT_TRUE(Holds(list, "\n" + name + "\r\n")) << name << how;
            }
        }
        EXPECT_EQ(list.substr(0, list.find('\r')), "2.00, 200,M") << how;
    }
};

TEST_F(TwoProcesses, TwoListsAtOnceLoseNothing)
{
    const pid_t first = StartCall(ListOf('A')), second = StartCall(ListOf('B'));
    EXPECT_EQ(StatusOf(first), 0);
    EXPECT_EQ(StatusOf(second), 0);
    ExpectAll("lists");
}

TEST_F(TwoProcesses, OneCallADrawingLosesNothing)
{
    for (int i = 0; i < Drawings; ++i) {
        const pid_t first = StartCall({"convert", Name('A', i)}),
                    second = StartCall({"convert", Name('B', i)});
        EXPECT_EQ(StatusOf(first), 0);
        EXPECT_EQ(StatusOf(second), 0);
    }
    ExpectAll("single calls");
}

} // namespace
} // namespace console_test
