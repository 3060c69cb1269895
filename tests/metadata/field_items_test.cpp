// One field, and the ordered, keyed collection of fields.
#include "metadata/field_items.h"

#include <gtest/gtest.h>

#include <functional>

#include "platform/environment/failure.h"
#include "tests/support/failures.h"

namespace dossierkit::tests {
namespace {

std::shared_ptr<cFieldItem> Named(const std::string& name) {
  auto item = std::make_shared<cFieldItem>();
  item->ItemName = name;
  return item;
}

std::vector<std::string> NamesIn(const cFieldItems& items) {
  std::vector<std::string> names;
  for (const auto& item : items) names.push_back(item->ItemName);
  return names;
}

// A, B and C under the keys "A01_A", "A01_B" and "A01_C".
cFieldItems ThreeItems() {
  cFieldItems items;
  for (const char* name : {"A", "B", "C"}) {
    auto item = Named(name);
    items.Add(item, std::string("A01_") + name);
  }
  return items;
}

TEST(FieldItem, AFreshItemIsEmpty) {
  cFieldItem item;
  EXPECT_EQ(item.TblName, "");
  EXPECT_EQ(item.ItemName, "");
  EXPECT_EQ(item.ItemDesc, "");
  EXPECT_EQ(item.FieldType, "");
  EXPECT_EQ(item.FieldLength, "");
  EXPECT_EQ(item.CodeTable, "");
  EXPECT_TRUE(item.Dmcod.IsUnset());
  EXPECT_EQ(item.Dmcpt, "");
  EXPECT_FALSE(item.IsNUll);
  EXPECT_EQ(item.Style, "");
  EXPECT_EQ(item.Check, "");
  EXPECT_EQ(item.FldWidth, 0);
  EXPECT_EQ(item.FldOrder, "");
  EXPECT_EQ(item.FldExplain, "");
}

TEST(FieldItem, TheSubCollectionIsMadeOnFirstUseAndKept) {
  cFieldItem item;
  const auto first = item.cFieldItems();
  ASSERT_TRUE(first);
  EXPECT_EQ(first->Count(), 0);
  EXPECT_EQ(item.cFieldItems(), first);
}

TEST(FieldItem, TheSubCollectionCanBeSetByReference) {
  cFieldItem item;
  const auto given = std::make_shared<cFieldItems>();
  item.SetcFieldItems(given);
  EXPECT_EQ(item.cFieldItems(), given);
}

TEST(FieldItem, ADroppedItemReleasesItsSubCollection) {
  auto item = Named("A");
  const std::weak_ptr<cFieldItems> sub = item->cFieldItems();
  item.reset();
  EXPECT_TRUE(sub.expired());
}

TEST(FieldItems, AddGivesTheMemberAndClearsTheCallersVariable) {
  cFieldItems items;
  auto item = Named("A0101");
  const auto* const address = item.get();
  const auto added = items.Add(item, "A01_A0101");
  EXPECT_EQ(added.get(), address);
  EXPECT_FALSE(item);
  EXPECT_EQ(items.Item("A01_A0101").get(), address);
}

TEST(FieldItems, AddWithoutAKeyAlsoClearsTheCallersVariable) {
  cFieldItems items;
  auto item = Named("A0101");
  items.Add(item);
  EXPECT_FALSE(item);
  EXPECT_EQ(items.Count(), 1);
}

TEST(FieldItems, AMemberWithoutAKeyIsFoundByPositionAlone) {
  cFieldItems items;
  auto first = Named("A");
  auto second = Named("B");
  items.Add(first);
  items.Add(second, "");
  EXPECT_EQ(items.Item(2)->ItemName, "B");
  EXPECT_EQ(NumberOfFailure([&] { items.Item(""); }), 5);
}

TEST(FieldItems, MembersAreNumberedFromOneInTheOrderOfInsertion) {
  const cFieldItems items = ThreeItems();
  EXPECT_EQ(items.Count(), 3);
  EXPECT_EQ(items.Item(1)->ItemName, "A");
  EXPECT_EQ(items.Item(3)->ItemName, "C");
  EXPECT_EQ(NamesIn(items), (std::vector<std::string>{"A", "B", "C"}));
}

TEST(FieldItems, KeysAreFoundWithoutRegardToCase) {
  const cFieldItems items = ThreeItems();
  EXPECT_EQ(items.Item("a01_b")->ItemName, "B");
  EXPECT_EQ(items.Item("A01_B"), items.Item("a01_B"));
}

TEST(FieldItems, AKeyTakenInAnyCaseIsRefusedAndNothingIsAdded) {
  cFieldItems items = ThreeItems();
  auto same = Named("same");
  EXPECT_EQ(NumberOfFailure([&] { items.Add(same, "A01_A"); }), 457);
  auto other_case = Named("other case");
  EXPECT_EQ(NumberOfFailure([&] { items.Add(other_case, "a01_a"); }), 457);
  EXPECT_EQ(items.Count(), 3);
}

TEST(FieldItems, AnUnknownKeyFails) {
  const cFieldItems items = ThreeItems();
  EXPECT_EQ(NumberOfFailure([&] { items.Item("A01_D"); }), 5);
  EXPECT_EQ(NumberOfFailure([] { cFieldItems().Item("A01_A"); }), 5);
}

TEST(FieldItems, APositionOutOfRangeFails) {
  const cFieldItems items = ThreeItems();
  EXPECT_EQ(NumberOfFailure([&] { items.Item(std::size_t{0}); }), 9);
  EXPECT_EQ(NumberOfFailure([&] { items.Item(4); }), 9);
}

TEST(FieldItems, RemovingByPositionMovesTheLaterMembersUp) {
  cFieldItems items = ThreeItems();
  items.remove(2);
  EXPECT_EQ(NamesIn(items), (std::vector<std::string>{"A", "C"}));
  EXPECT_EQ(items.Item(2)->ItemName, "C");
  EXPECT_EQ(items.Item("A01_C")->ItemName, "C");
  EXPECT_EQ(NumberOfFailure([&] { items.Item("A01_B"); }), 5);
}

TEST(FieldItems, RemovingByKeyFreesTheKey) {
  cFieldItems items = ThreeItems();
  items.remove("a01_a");
  auto again = Named("again");
  items.Add(again, "A01_A");
  EXPECT_EQ(NamesIn(items), (std::vector<std::string>{"B", "C", "again"}));
}

TEST(FieldItems, RemovingWhatIsNotThereFailsAndChangesNothing) {
  cFieldItems items = ThreeItems();
  EXPECT_EQ(NumberOfFailure([&] { items.remove(std::size_t{0}); }), 9);
  EXPECT_EQ(NumberOfFailure([&] { items.remove(4); }), 9);
  EXPECT_EQ(NumberOfFailure([&] { items.remove("A01_D"); }), 5);
  EXPECT_EQ(items.Count(), 3);
}

TEST(FieldItems, AMemberOutlivesTheCollectionForWhoeverHoldsIt) {
  auto items = std::make_unique<cFieldItems>(ThreeItems());
  const auto held = items->Item("A01_B");
  items.reset();
  EXPECT_EQ(held->ItemName, "B");
}

}  // namespace
}  // namespace dossierkit::tests
