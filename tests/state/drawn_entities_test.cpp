// Every record knows the entities of the drawing that it comes from, through every pass.
#include "state/drawn_entities.h"

#include <gtest/gtest.h>

namespace kv {
namespace {

class DrawnTogetherTest : public testing::Test {
  protected:
    void SetUp() override { ForgetDrawnEntities(); }
};

TEST_F(DrawnTogetherTest, OneEntityIsItself)
{
    EXPECT_EQ(EntitiesOf(7), std::vector<Long>{7});
    EXPECT_TRUE(EntitiesOf(0).empty());
    EXPECT_EQ(DrawnTogether(7, 7), 7);
    EXPECT_EQ(DrawnTogether(0, 7), 7);
    EXPECT_EQ(DrawnTogether(7, 0), 7);
}

TEST_F(DrawnTogetherTest, SeveralEntitiesAreOneNumberBelowZero)
{
    const Long two = DrawnTogether(9, 4);
    EXPECT_LT(two, 0);
    EXPECT_EQ(EntitiesOf(two), (std::vector<Long>{4, 9}));
    const Long three = DrawnTogether(two, 6);
    EXPECT_EQ(EntitiesOf(three), (std::vector<Long>{4, 6, 9}));
    EXPECT_EQ(EntitiesOf(two), (std::vector<Long>{4, 9}));
}

TEST_F(DrawnTogetherTest, EachEntityOfASetStandsInItOnce)
{
    const Long set = DrawnTogether(DrawnTogether(1, 2), DrawnTogether(2, 3));
    EXPECT_EQ(EntitiesOf(set), (std::vector<Long>{1, 2, 3}));
}

} // namespace
} // namespace kv
