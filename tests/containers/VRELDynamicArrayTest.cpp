#include "VRELDynamicArray.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <random>
#include <type_traits>
#include <utility>
#include <vector>

#include "VRELAllocException.h"
#include "VRELString.h"

namespace {

template <class T>
VRELArrayHeader*& HeaderOf(VRELDynamicArray<T>& array) {
  static_assert(sizeof array == sizeof(VRELArrayHeader*));
  return reinterpret_cast<VRELArrayHeader*&>(array);
}

template <class T>
std::vector<T> ValuesOf(VRELDynamicArray<T> const& array) {
  return {array.begin(), array.end()};
}

VRELDynamicArray<int> Ints(std::initializer_list<int> values) {
  VRELDynamicArray<int> result;
  for (int value : values) result.add(value);
  return result;
}

// Memory of its own and no pointer into itself, which a Words may hold.
using Words = std::vector<int>;

// Counts what happens to it, and notes the values in the order of their deaths.
struct Counted {
  explicit Counted(int number = 0) : value(number), born(this) { ++made; }
  Counted(Counted const& other) : value(other.value), born(this) { ++copied; }
  Counted& operator=(Counted const&) = default;
  ~Counted() { deaths.push_back(value); }

  static void Reset() {
    made = copied = 0;
    deaths.clear();
  }

  int value;
  Counted* born;  // where the constructor ran

  static inline int made = 0;
  static inline int copied = 0;
  static inline std::vector<int> deaths;
};

class VRELDynamicArrayCountedTest : public testing::Test {
 protected:
  VRELDynamicArrayCountedTest() { Counted::Reset(); }

  // An array of 1 to n, with the counts of its making forgotten.
  static VRELDynamicArray<Counted> OneTo(int n) {
    VRELDynamicArray<Counted> result;
    for (int i = 1; i <= n; ++i) result.add(Counted(i));
    Counted::Reset();
    return result;
  }
};

TEST(VRELDynamicArrayTest, IsOnePointerWithoutVirtualOperations) {
  EXPECT_EQ(sizeof(VRELDynamicArray<double>), sizeof(void*));
  EXPECT_FALSE(std::is_polymorphic_v<VRELDynamicArray<double>>);
}

TEST(VRELDynamicArrayTest, StartsEmptyWithTenSlots) {
  VRELDynamicArray<double> doubles;
  EXPECT_EQ(doubles.size(), 0);
  EXPECT_EQ(HeaderOf(doubles)->capacity, 10);
  EXPECT_EQ(HeaderOf(doubles)->elementSize, 8);
  EXPECT_EQ(HeaderOf(doubles)->shareCount, 0);
  VRELDynamicArray<char> chars;
  EXPECT_EQ(HeaderOf(chars)->capacity, 10);
  EXPECT_EQ(HeaderOf(chars)->elementSize, 1);
}

TEST(VRELDynamicArrayTest, StartsWithCopiesOfAValue) {
  VRELDynamicArray<int> three(3, 7);
  EXPECT_EQ(ValuesOf(three), (std::vector<int>{7, 7, 7}));
  EXPECT_EQ(HeaderOf(three)->capacity, 3);
  for (int n : {0, -1}) {
    VRELDynamicArray<int> none(n, 7);
    EXPECT_EQ(none.size(), 0);
    EXPECT_EQ(HeaderOf(none)->capacity, 10);
  }
}

TEST(VRELDynamicArrayTest, AddsAndIndexes) {
  VRELDynamicArray<int> array;
  for (int i = 0; i < 10; ++i) array.add(i * i);
  EXPECT_EQ(HeaderOf(array)->capacity, 10);
  array.add(100);
  EXPECT_EQ(HeaderOf(array)->capacity, 16);
  for (int i = 11; i < 16; ++i) array.add(i * i);
  EXPECT_EQ(HeaderOf(array)->capacity, 16);
  array.add(256);
  EXPECT_EQ(HeaderOf(array)->capacity, 25);
  EXPECT_EQ(array.size(), 17);
  for (int i = 0; i < 17; ++i) EXPECT_EQ(array[i], i * i);
  array[3] = -1;
  VRELDynamicArray<int> const& constant = array;
  EXPECT_EQ(constant[3], -1);
  EXPECT_EQ(constant.getArray(), &constant[0]);
  EXPECT_EQ(array.getArray() + 3, &array[3]);
}

TEST(VRELDynamicArrayTest, CanBeWalked) {
  VRELDynamicArray<int> array = Ints({1, 2, 3});
  for (int& value : array) value *= 10;
  int sum = 0;
  for (int value : static_cast<VRELDynamicArray<int> const&>(array)) sum += value;
  EXPECT_EQ(sum, 60);
}

TEST(VRELDynamicArrayTest, CopiesShareTheStorage) {
  auto a = std::make_unique<VRELDynamicArray<Words>>();
  a->add({1});
  VRELDynamicArray<Words> b = *a;
  EXPECT_EQ(HeaderOf(b), HeaderOf(*a));
  EXPECT_EQ(HeaderOf(b)->shareCount, 1);
  b.add({2, 2});
  EXPECT_EQ(a->size(), 2);
  a->removeAt(0);
  EXPECT_EQ(ValuesOf(b), (std::vector<Words>{{2, 2}}));
  for (int i = 0; i < 20; ++i) b.add({3});
  EXPECT_EQ(a->size(), 21);
  EXPECT_EQ((*a)[20], Words{3});
  a.reset();
  EXPECT_EQ(HeaderOf(b)->shareCount, 0);
  EXPECT_EQ(b[0], (Words{2, 2}));
  EXPECT_EQ(b.size(), 21);
}

TEST(VRELDynamicArrayTest, AssignmentShares) {
  VRELDynamicArray<int> a = Ints({1, 2});
  VRELDynamicArray<int> b = Ints({3});
  EXPECT_EQ(&(b = a), &b);
  EXPECT_EQ(HeaderOf(b), HeaderOf(a));
  EXPECT_EQ(HeaderOf(a)->shareCount, 1);
  b = a;  // both hold it already
  EXPECT_EQ(HeaderOf(a)->shareCount, 1);
  VRELDynamicArray<int>& itself = a;
  EXPECT_EQ(&(a = itself), &a);
  EXPECT_EQ(HeaderOf(a)->shareCount, 1);
  EXPECT_EQ(ValuesOf(a), (std::vector<int>{1, 2}));
}

TEST(VRELDynamicArrayTest, DeepCopyIsIndependent) {
  VRELDynamicArray<int> a;
  for (int i = 0; i < 30; ++i) a.add(i);
  VRELDynamicArray<int> b = a.copy();
  EXPECT_NE(HeaderOf(b), HeaderOf(a));
  EXPECT_EQ(HeaderOf(b)->shareCount, 0);
  EXPECT_EQ(HeaderOf(b)->capacity, 38);
  EXPECT_EQ(ValuesOf(b), ValuesOf(a));
  b.add(7);
  b[0] = 7;
  EXPECT_EQ(a.size(), 30);
  EXPECT_EQ(a[0], 0);
}

TEST(VRELDynamicArrayTest, AppendsTheOthersElements) {
  VRELDynamicArray<int> a = Ints({1, 2});
  a.append(Ints({3, 4, 5}));
  EXPECT_EQ(ValuesOf(a), (std::vector<int>{1, 2, 3, 4, 5}));
  a.append(a);
  EXPECT_EQ(ValuesOf(a), (std::vector<int>{1, 2, 3, 4, 5, 1, 2, 3, 4, 5}));
  VRELDynamicArray<int> const shared = a;
  a.append(shared);
  EXPECT_EQ(a.size(), 20);
  EXPECT_EQ(a[19], 5);
  EXPECT_EQ(HeaderOf(a)->capacity, 25);
}

TEST(VRELDynamicArrayTest, AddsAnElementOfItsOwn) {
  VRELDynamicArray<std::vector<int>> array(1, {1, 2, 3});
  for (int i = 0; i < 100; ++i) {
    array.add(array[array.size() / 2]);
  }
  EXPECT_EQ(array.size(), 101);
  for (std::vector<int> const& each : array) EXPECT_EQ(each, (std::vector<int>{1, 2, 3}));
}

TEST(VRELDynamicArrayTest, MovesToTheEnd) {
  VRELDynamicArray<std::unique_ptr<int>> numbers;
  for (int i = 0; i < 100; ++i) {
    auto number = std::make_unique<int>(i);
    int const* const place = number.get();
    numbers.addMoved(std::move(number));
    EXPECT_EQ(number, nullptr);
    EXPECT_EQ(numbers[i].get(), place);
  }
  ASSERT_EQ(numbers.size(), 100);
  for (int i = 0; i < 100; ++i) EXPECT_EQ(*numbers[i], i);
  // One of its own, in a full and in a grown array.
  VRELDynamicArray<Words> words(3, Words{1, 2});
  words.addMoved(std::move(words[1]));
  words.addMoved(std::move(words[0]));
  EXPECT_EQ(ValuesOf(words), (std::vector<Words>{{}, {}, {1, 2}, {1, 2}, {1, 2}}));
}

TEST(VRELDynamicArrayTest, RemovesAndShrinks) {
  VRELDynamicArray<int> array = Ints({0, 1, 2, 3, 4, 5, 6, 7});
  EXPECT_EQ(array.removeAt(3), 1);
  EXPECT_EQ(ValuesOf(array), (std::vector<int>{0, 1, 2, 4, 5, 6, 7}));
  EXPECT_EQ(array.endShrink(2), 1);
  EXPECT_EQ(ValuesOf(array), (std::vector<int>{0, 1, 2, 4, 5}));
  EXPECT_EQ(array.frontShrink(2), 1);
  EXPECT_EQ(ValuesOf(array), (std::vector<int>{2, 4, 5}));
  EXPECT_EQ(array.endShrink(0), 1);
  EXPECT_EQ(array.frontShrink(0), 1);
  EXPECT_EQ(array.endShrink(-1), 1);
  EXPECT_EQ(array.frontShrink(-1), 1);
  EXPECT_EQ(ValuesOf(array), (std::vector<int>{2, 4, 5}));
  EXPECT_EQ(HeaderOf(array)->capacity, 10);
}

TEST(VRELDynamicArrayTest, GrowsAndResizesWithZeros) {
  VRELDynamicArray<int> array = Ints({1, 2, 3});
  array.clear();
  EXPECT_EQ(array.endGrow(3), 1);  // over what stood there
  EXPECT_EQ(ValuesOf(array), (std::vector<int>{0, 0, 0}));
  EXPECT_EQ(array.endGrow(0), 1);
  EXPECT_EQ(array.endGrow(-2), 1);
  EXPECT_EQ(array.size(), 3);
  array[2] = 9;
  EXPECT_EQ(array.resize(5), 1);
  EXPECT_EQ(ValuesOf(array), (std::vector<int>{0, 0, 9, 0, 0}));
  EXPECT_EQ(array.resize(3), 1);
  EXPECT_EQ(array.resize(3), 1);
  EXPECT_EQ(ValuesOf(array), (std::vector<int>{0, 0, 9}));
  EXPECT_EQ(array.resize(100), 1);
  EXPECT_EQ(array.size(), 100);
  EXPECT_EQ(HeaderOf(array)->capacity, 133);
  EXPECT_EQ(array.resize(-7), 1);
  EXPECT_EQ(array.size(), 0);
  VRELDynamicArray<void*> pointers;
  pointers.endGrow(2);
  EXPECT_EQ(ValuesOf(pointers), (std::vector<void*>{nullptr, nullptr}));
}

TEST(VRELDynamicArrayTest, IndexesOutsideRemoveNothing) {
  VRELDynamicArray<Words> array;
  array.add({1});
  array.add({2});
  array.removeAt(1);
  for (int index : {1, 2, 9, 10, 1000000, 2147483647, -1, -2147483647}) EXPECT_EQ(array.removeAt(index), 1);
  EXPECT_EQ(array.size(), 1);
  EXPECT_EQ(array.endShrink(5), 1);
  EXPECT_EQ(array.size(), 0);
  EXPECT_EQ(array.endShrink(2147483647), 1);
  EXPECT_EQ(array.frontShrink(2147483647), 1);
  EXPECT_EQ(array.removeAt(0), 1);
  EXPECT_EQ(array.size(), 0);
}

TEST(VRELDynamicArrayTest, WithoutAHeaderItIsEmpty) {
  VRELDynamicArray<Words> array;
  VRELArrayHeader* const kept = HeaderOf(array);
  HeaderOf(array) = nullptr;
  EXPECT_EQ(array.size(), 0);
  EXPECT_EQ(array.getArray(), nullptr);
  EXPECT_EQ(array.begin(), array.end());
  array.add({1});
  array.append(VRELDynamicArray<Words>(2, {1}));
  EXPECT_EQ(array.endGrow(3), 1);
  EXPECT_EQ(array.removeAt(0), 1);
  EXPECT_EQ(array.endShrink(1), 1);
  EXPECT_EQ(array.frontShrink(1), 1);
  EXPECT_EQ(array.resize(4), 1);
  array.clear();
  EXPECT_EQ(array.size(), 0);
  VRELDynamicArray<Words> copy(array);
  EXPECT_EQ(HeaderOf(copy), nullptr);
  VRELDynamicArray<Words> deep = array.copy();
  EXPECT_EQ(HeaderOf(deep)->capacity, 10);
  HeaderOf(array) = kept;
}

TEST(VRELDynamicArrayTest, AWrongCheckWordMakesItEmpty) {
  VRELDynamicArray<int> array = Ints({1, 2});
  HeaderOf(array)->checkWord = nullptr;
  EXPECT_EQ(array.size(), 0);
  array.add(3);
  array.clear();
  array.removeAt(0);
  array.resize(5);
  EXPECT_EQ(HeaderOf(array)->count, 2);
  HeaderOf(array)->checkWord = HeaderOf(array)->data;
  EXPECT_EQ(ValuesOf(array), (std::vector<int>{1, 2}));
}

TEST(VRELDynamicArrayTest, ACapacityBeyondAnIntThrows) {
  VRELDynamicArray<char> array;
  array.add('x');
  VRELArrayHeader* const header = HeaderOf(array);
  EXPECT_THROW(array.endGrow(2147483647), VRELAllocException);
  EXPECT_THROW(array.resize(2147483647), VRELAllocException);
  header->count = header->capacity = 2000000000;
  EXPECT_THROW(array.add('y'), VRELAllocException);
  EXPECT_EQ(header->count, 2000000000);
  header->count = 1;
  header->capacity = 10;
  EXPECT_EQ(array[0], 'x');
}

TEST_F(VRELDynamicArrayCountedTest, CopyConstructsEachElementOnce) {
  {
    Counted const value(5);
    VRELDynamicArray<Counted> const filled(4, value);
    EXPECT_EQ(Counted::copied, 4);
    EXPECT_EQ(Counted::made, 1);
    VRELDynamicArray<Counted> const shared(filled);
    EXPECT_EQ(Counted::copied, 4);
    VRELDynamicArray<Counted> const deep = filled.copy();
    EXPECT_EQ(Counted::copied, 8);
    EXPECT_EQ(Counted::deaths.size(), 0u);
  }
  EXPECT_EQ(Counted::deaths.size(), 9u);
}

TEST_F(VRELDynamicArrayCountedTest, GrowthMovesBytesAndConstructsNothing) {
  VRELDynamicArray<Counted> array(1, Counted(1));
  Counted* const first = array.getArray();
  Counted::Reset();
  array.add(array[0]);
  array.add(array[0]);
  EXPECT_EQ(Counted::copied, 2);
  EXPECT_EQ(Counted::deaths.size(), 0u);
  EXPECT_EQ(HeaderOf(array)->capacity, 4);
  EXPECT_EQ(array[0].born, first);  // as the bytes were when the constructor ran
  EXPECT_EQ(array[2].value, 1);
}

TEST_F(VRELDynamicArrayCountedTest, LastOwnerDestroysFromTheFront) {
  auto array = std::make_unique<VRELDynamicArray<Counted>>(OneTo(3));
  auto second = std::make_unique<VRELDynamicArray<Counted>>(*array);
  array.reset();
  EXPECT_EQ(Counted::deaths, std::vector<int>{});
  second.reset();
  EXPECT_EQ(Counted::deaths, (std::vector<int>{1, 2, 3}));
}

TEST_F(VRELDynamicArrayCountedTest, AssignmentDestroysWhatNobodyElseHolds) {
  VRELDynamicArray<Counted> array = OneTo(2);
  VRELDynamicArray<Counted> const empty;
  {
    VRELDynamicArray<Counted> const holder = array;
    array = empty;
    EXPECT_EQ(Counted::deaths, std::vector<int>{});
    EXPECT_EQ(array.size(), 0);
    array = holder;
  }
  EXPECT_EQ(Counted::deaths, std::vector<int>{});
  array = empty;
  EXPECT_EQ(Counted::deaths, (std::vector<int>{1, 2}));
}

TEST_F(VRELDynamicArrayCountedTest, ClearDestroysForAllOwners) {
  VRELDynamicArray<Counted> array = OneTo(3);
  VRELDynamicArray<Counted> const shared = array;
  array.clear();
  EXPECT_EQ(Counted::deaths, (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(shared.size(), 0);
  EXPECT_EQ(HeaderOf(array)->capacity, 10);
}

TEST_F(VRELDynamicArrayCountedTest, RemovalDestroysJustTheRemoved) {
  VRELDynamicArray<Counted> array = OneTo(7);
  array.removeAt(1);
  EXPECT_EQ(Counted::deaths, std::vector<int>{2});
  array.endShrink(2);
  EXPECT_EQ(Counted::deaths, (std::vector<int>{2, 7, 6}));
  array.frontShrink(2);
  EXPECT_EQ(Counted::deaths, (std::vector<int>{2, 7, 6, 1, 3}));
  array.resize(1);
  EXPECT_EQ(Counted::deaths, (std::vector<int>{2, 7, 6, 1, 3, 5}));
  EXPECT_EQ(array[0].value, 4);
  EXPECT_EQ(Counted::copied, 0);
  array.resize(3);
  EXPECT_EQ(Counted::made, 2);
  EXPECT_EQ(Counted::copied, 0);
}

TEST_F(VRELDynamicArrayCountedTest, RemovalAtAFreeSlotRunsTheDestructorOnIt) {
  VRELDynamicArray<Counted> array = OneTo(3);
  EXPECT_EQ(array.removeAt(3), 1);
  EXPECT_EQ(array.removeAt(9), 1);
  EXPECT_EQ(Counted::deaths, (std::vector<int>{0, 0}));
  EXPECT_EQ(array.removeAt(10), 1);  // no slot
  EXPECT_EQ(array.removeAt(-1), 1);
  EXPECT_EQ(Counted::deaths, (std::vector<int>{0, 0}));
  EXPECT_EQ(array.removeAt(2), 1);
  EXPECT_EQ(Counted::deaths, (std::vector<int>{0, 0, 3}));
  EXPECT_EQ(array.removeAt(2), 1);  // its element is destroyed already
  EXPECT_EQ(Counted::deaths, (std::vector<int>{0, 0, 3}));
  EXPECT_EQ(array.size(), 2);
}

struct WithVirtualTable {
  virtual ~WithVirtualTable() { ++deaths; }
  static inline int deaths = 0;
};

TEST(VRELDynamicArrayTest, RemovalAtAFreeSlotSparesAClassWithVirtualOperations) {
  VRELDynamicArray<WithVirtualTable> array;
  array.endGrow(1);
  EXPECT_EQ(array.removeAt(4), 1);
  EXPECT_EQ(WithVirtualTable::deaths, 0);
  EXPECT_EQ(array.removeAt(0), 1);
  EXPECT_EQ(WithVirtualTable::deaths, 1);
}

struct Tree {
  VRELDynamicArray<Tree> children;
};

TEST(VRELDynamicArrayTest, TakesOverFromAnElementOfItsOwn) {
  Tree root;
  root.children.endGrow(2);
  root.children[1].children.endGrow(3);
  root.children = root.children[1].children;
  EXPECT_EQ(root.children.size(), 3);
  EXPECT_EQ(HeaderOf(root.children)->shareCount, 0);
}

TEST(VRELDynamicArrayTest, FindsRemovesAndAddsUnique) {
  VRELDynamicArray<int> array;
  EXPECT_EQ(vrelArrayFind<int>(array, 4), -1);
  EXPECT_EQ(vrelArrayRemove<int>(array, 4), -1);
  for (int value : {4, 5, 4}) array.add(value);
  EXPECT_EQ(vrelArrayFind<int>(array, 4), 0);
  EXPECT_EQ(vrelArrayFind<int>(array, 5), 1);
  EXPECT_EQ(vrelArrayFind<int>(array, 6), -1);
  EXPECT_FALSE(vrelArrayAddUnique<int>(array, 5));
  EXPECT_EQ(array.size(), 3);
  EXPECT_TRUE(vrelArrayAddUnique<int>(array, 6));
  EXPECT_EQ(ValuesOf(array), (std::vector<int>{4, 5, 4, 6}));
  EXPECT_EQ(vrelArrayRemove<int>(array, 4), 0);
  EXPECT_EQ(vrelArrayRemove<int>(array, 6), 2);
  EXPECT_EQ(ValuesOf(array), (std::vector<int>{5, 4}));
  int numbers[2];
  VRELDynamicArray<int*> pointers(1, &numbers[0]);
  EXPECT_EQ(vrelArrayFind<int*>(pointers, &numbers[1]), -1);
  EXPECT_TRUE(vrelArrayAddUnique<int*>(pointers, &numbers[1]));
  EXPECT_EQ(vrelArrayRemove<int*>(pointers, &numbers[1]), 1);
}

TEST(VRELDynamicArrayTest, FollowsAModel) {
  std::mt19937 random(21);
  VRELDynamicArray<Words> array;
  std::vector<Words> model;
  for (int step = 0; step < 20000; ++step) {
    Words const value(random() % 30, step);
    int const size = static_cast<int>(model.size());
    int const n = static_cast<int>(random() % 5);
    switch (random() % 10) {
      case 0:
      case 1:
      case 2:
      case 3:
        array.add(value);
        model.push_back(value);
        break;
      case 4:
        if (size == 0) break;
        array.removeAt(n % size);
        model.erase(model.begin() + n % size);
        break;
      case 5:
        array.endGrow(n);
        model.resize(model.size() + static_cast<std::size_t>(n));
        break;
      case 6:
        array.endShrink(n);
        model.resize(static_cast<std::size_t>(std::max(0, size - n)));
        break;
      case 7:
        array.frontShrink(n);
        model.erase(model.begin(), model.begin() + std::min(n, size));
        break;
      case 8: {
        if (size >= 50) break;
        array.append(array);
        std::vector<Words> const same = model;
        model.insert(model.end(), same.begin(), same.end());
        break;
      }
      default:
        array.resize(static_cast<int>(random() % 40));
        model.resize(static_cast<std::size_t>(array.size()));
        break;
    }
    ASSERT_EQ(ValuesOf(array), model);
  }
}

TEST(VRELDynamicArrayTest, AppendsElementsInARow) {
  int const numbers[] = {1, 2, 3};
  VRELDynamicArray<int> array;
  array.append(numbers, 3);
  array.append(numbers + 1, 1);
  array.append(numbers, 0);
  array.append(numbers, -1);
  array.append(static_cast<int const*>(nullptr), 0);
  ASSERT_EQ(array.size(), 4);
  EXPECT_EQ(array[0], 1);
  EXPECT_EQ(array[2], 3);
  EXPECT_EQ(array[3], 2);
}

// The storage moves under the elements.
TEST(VRELDynamicArrayTest, AppendsItsOwnElementsInARow) {
  VRELDynamicArray<VRELString> array;
  array.add(VRELString("a"));
  array.add(VRELString("b"));
  VRELDynamicArray<VRELString> const shared(array);
  for (int i = 0; i < 6; ++i) array.append(array.getArray() + 1, array.size() - 1);
  ASSERT_EQ(array.size(), 65);
  ASSERT_EQ(shared.size(), 65);
  EXPECT_TRUE(array[0].equals(VRELString("a")));
  for (int i = 1; i < 65; ++i) EXPECT_TRUE(array[i].equals(VRELString("b"))) << i;
}

}  // namespace
