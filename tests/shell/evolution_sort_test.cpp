// The radios of Optimizer Settings and what they switch.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "shell/setup_rules.h"
#include "state/settings_folder.h"
#include "state/settings_grids.h"

namespace kv {
namespace {

using EvolutionSorting = SettingsFolder;

TEST_F(EvolutionSorting, ClickSelectsOneRadioAndItsKeyAlone)
{
    for (int index = 0; index < 5; ++index) {
        ClickEvolutionSort(index);
        const std::vector<bool> words = {Config.EvOptOff, Config.EvOptLR, Config.EvOptRL, Config.EvOptGS,
                                         Config.EvOptSS};
        std::vector<bool> expected(5, false);
        expected[static_cast<std::size_t>(index)] = true;
        EXPECT_EQ(words, expected) << index;
        EXPECT_EQ(EvolutionSort(), index);
    }
}

TEST_F(EvolutionSorting, MainWindowShowsTheCaptionOfTheSelectedRadio)
{
    const std::vector<std::string> captions = {"Does Not Sort", "Increasing Fret Sorting in X",
                                               "Decreasing Fret Sorting in X", "Generic Sorting",
                                               "Sequential Sorting"};
    for (int index = 0; index < 5; ++index) {
        ClickEvolutionSort(index);
        EXPECT_EQ(ShowSelectedEvolutionSort(), captions[static_cast<std::size_t>(index)]);
    }
}

TEST_F(EvolutionSorting, NoRadioOnGivesNoCaptionAndDoesNotSort)
{
    EXPECT_EQ(ShowSelectedEvolutionSort(), "");
    EXPECT_EQ(EvolutionSort(), 0);
}

TEST_F(EvolutionSorting, LastOfSeveralStoredWordsWins)
{
    Config.EvOptLR = Config.EvOptSS = true;
    EXPECT_EQ(EvolutionSort(), 4);
    EXPECT_EQ(ShowSelectedEvolutionSort(), "Sequential Sorting");
}

TEST_F(EvolutionSorting, AnyRadioButGenericSortingTakesTheSecondTabAway)
{
    EXPECT_FALSE(GenericSortingAvailable());
    for (int index = 0; index < 5; ++index) {
        ClickEvolutionSort(index);
        EXPECT_EQ(GenericSortingAvailable(), index == 3) << index;
    }
}

TEST_F(EvolutionSorting, ClickOutsideTheGroupChangesNothing)
{
    ClickEvolutionSort(2);
    ClickEvolutionSort(5);
    ClickEvolutionSort(-1);
    EXPECT_EQ(EvolutionSort(), 2);
}

TEST_F(EvolutionSorting, SelectedRadioIsStoredWithTheOtherSettings)
{
    ClickEvolutionSort(3);
    ExchangeSettings(true);
    EXPECT_EQ(GetConfigValue("EvOptGS"), "True");
    EXPECT_EQ(GetConfigValue("EvOptOff"), "False");
    ClickEvolutionSort(0);
    ExchangeSettings(false);
    EXPECT_EQ(EvolutionSort(), 3);
}

TEST_F(EvolutionSorting, MissingSortFileShowsTheDefaults)
{
    ASSERT_FALSE(FileStands("OptSettings.Dat"));
    GridCells cells;
    ASSERT_TRUE(LoadSortOptions(cells).Is != Presence::CannotTell);
    ASSERT_EQ(cells.size(), 6U);
    const std::vector<std::string> row = {"0", "0", "0", "0", "0", "0",    "-",
                                          "-", "-", "-", "-", "0", "X -->"};
    for (const std::vector<std::string>& shown : cells)
        EXPECT_EQ(shown, row);
}

} // namespace
} // namespace kv
