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

std::string ValueOf(const MessageValues& values, std::string_view name)
{
    for (const MessageValue& value : values)
        if (value.Name == name)
            return value.Text;
    return "none";
}

TEST_F(DrawnTogetherTest, AMessageNamesLineAndHandleOfTheFirstEntity)
{
    DrawnEntity entity;
    entity.Line = 40;
    entity.Handle = "2F";
    DrawnEntities.Append(entity);
    entity.Line = 60;
    entity.Handle = "";
    DrawnEntities.Append(entity);
    const MessageValues both = WithPlace({{"layer", "A"}}, DrawnTogether(2, 1));
    EXPECT_EQ(ValueOf(both, "layer"), "A");
    EXPECT_EQ(ValueOf(both, "line"), "40");
    EXPECT_EQ(ValueOf(both, "handle"), "2F");
    EXPECT_EQ(ValueOf(WithPlace({}, 2), "line"), "60");
    EXPECT_EQ(ValueOf(WithPlace({}, 2), "handle"), "none"); // the drawing gives it none
    EXPECT_EQ(ValueOf(WithPlace({}, 0), "line"), "none");
}

void AppendBlank(int count)
{
    for (int i = 0; i < count; ++i)
        DrawnEntities.Append(DrawnEntity{});
}

TEST_F(DrawnTogetherTest, APartBelongsToItsPolylineAndItsCopyToTheCopiedOne)
{
    AppendBlank(4);
    NoteOwner(2, 1);
    NoteOwner(3, 1);
    DrawnCopies copies;
    const Long polyline = copies.Of(1);
    const Long vertex = copies.Of(2);
    EXPECT_EQ(WholeOf(1), 1);
    EXPECT_EQ(WholeOf(3), 1);
    EXPECT_EQ(WholeOf(4), 4); // behind the last part
    EXPECT_EQ(WholeOf(polyline), polyline);
    EXPECT_EQ(WholeOf(vertex), polyline);
    EXPECT_EQ(DrawnAs(vertex), 1);
    ForgetDrawnEntities();
    AppendBlank(2);
    EXPECT_EQ(WholeOf(2), 2);
}

TEST_F(DrawnTogetherTest, ARenameLeavesTheLayerAsDrawnAndTheOtherEntitiesOfItsLook)
{
    AppendBlank(2);
    NameDrawn(1, 5, 6, 6);
    NameDrawn(2, 5, 6, 6);
    RenameDrawn(2, 9);
    EXPECT_EQ(LookOf(1), (EntityLook{5, 6, 0, 6}));
    EXPECT_EQ(LookOf(2), (EntityLook{5, 6, 0, 9}));
    RenameDrawn(0, 9); // a record of no entity
    EXPECT_EQ(LookOf(0), EntityLook{});
}

// A drawing may have a million entities that mean nothing.
TEST(DrawnEntitySize, AnEntityTakesFewBytesBesideItsRecord)
{
    EXPECT_LE(sizeof(DrawnEntity) + sizeof(DxfEntity::Drawn), sizeof(DxfEntity) / 10);
}

} // namespace
} // namespace kv
