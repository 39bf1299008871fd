#include "VRELIsByteMovable.h"

#include <gtest/gtest.h>

#include <any>
#include <array>
#include <cstddef>
#include <deque>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <variant>
#include <vector>

#include "VRELDynamicArray.h"
#include "VRELHashMap.h"
#include "VRELString.h"

namespace {

struct Node {
  Node* self = this;
};

// Named as standard templates, and movable.
struct any {};
template <class T>
struct list {};
template <class T, std::size_t n>
struct Ring {};

}  // namespace

template <>
struct VRELIsByteMovable<Node> : std::false_type {};
// As a program decides whose standard library has maps that survive a byte move.
template <>
struct VRELIsByteMovable<std::map<short, short>> : std::true_type {};

namespace {

template <class... T>
constexpr bool allMovable = (VRELIsByteMovable<T>::value && ...);
template <class... T>
constexpr bool noneMovable = (!VRELIsByteMovable<T>::value && ...);

TEST(VRELIsByteMovableTest, RejectsSelfReferentialStandardTypes) {
  static_assert(noneMovable<std::string, std::wstring, std::u16string, std::u32string, std::string const>);
  static_assert(noneMovable<std::list<int>, std::deque<int>, std::any, std::function<void()>>);
  static_assert(noneMovable<std::map<int, int>, std::multimap<int, int>, std::set<int>, std::multiset<int>>);
  static_assert(noneMovable<std::unordered_map<int, int>, std::unordered_multimap<int, int>>);
  static_assert(noneMovable<std::unordered_set<int>, std::unordered_multiset<int>>);
}

TEST(VRELIsByteMovableTest, RejectsTypesWithRejectedMembers) {
  static_assert(noneMovable<std::optional<std::string>, std::pair<int, std::string>, std::pair<std::any, int>>);
  static_assert(noneMovable<std::optional<std::pair<int, std::list<int>>>, std::tuple<int, std::string>>);
  static_assert(noneMovable<std::variant<int, std::string>, std::array<std::string, 3>, std::string[2]>);
}

TEST(VRELIsByteMovableTest, AcceptsOtherTypes) {
  static_assert(allMovable<int, double, void*, std::string*, int[3], VRELString, VRELDynamicArray<int>>);
  static_assert(allMovable<VRELHashMap<int, int>, std::vector<std::string>, std::unique_ptr<std::string>>);
  static_assert(allMovable<std::shared_ptr<std::string>, std::string_view, std::array<int, 3>, std::tuple<>>);
  static_assert(allMovable<std::optional<int>, std::pair<int, double>, std::variant<int, double>>);
  static_assert(allMovable<any, list<std::string>, Ring<std::string, 2>>);
}

TEST(VRELIsByteMovableTest, SpecializationDecidesForClientTypes) {
  static_assert(noneMovable<Node, std::optional<Node>, Node[2]>);
  static_assert(allMovable<std::map<short, short>, std::pair<int, std::map<short, short>>>);
}

}  // namespace
