// Model of the hash containers that follows their steps one by one. Tests compare the containers with it.
#pragma once

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

// Keys are ints; value and key of a free slot are 0.
class HashModel {
 public:
  struct Row {
    int key = 0;
    int value = 0;
    bool occupied = false;
  };

  std::function<unsigned int(int)> hash = [](int key) { return static_cast<unsigned int>(key); };
  std::function<bool(int, int)> equal = [](int a, int b) { return a == b; };
  std::vector<Row> rows = std::vector<Row>(17);
  int count = 0;

  int Find(int key) const {
    int const slots = static_cast<int>(rows.size());
    int const start = static_cast<int>(hash(key) % static_cast<unsigned int>(slots));
    for (int i = start; i < slots; ++i) {
      if (!At(i).occupied) return -1;
      if (equal(key, At(i).key)) return i;
    }
    for (int i = 0; i < start; ++i) {
      if (!At(i).occupied) return -1;
      if (equal(key, At(i).key)) return i;
    }
    return -1;
  }

  bool Add(int key, int value) {
    if (count + 1 > 0.75 * static_cast<double>(rows.size())) Rehash(2 * static_cast<int>(rows.size()));
    if (!Place(rows, key, value)) return false;
    ++count;
    return true;
  }

  bool Put(int key, int value) {
    int const slot = Find(key);
    if (slot < 0) return Add(key, value);
    rows[static_cast<std::size_t>(slot)].value = value;
    return true;
  }

  void Rehash(int slots) {
    std::vector<Row> fresh(static_cast<std::size_t>(slots));
    for (Row const& row : rows) {
      if (row.occupied) Place(fresh, row.key, row.value);
    }
    rows = std::move(fresh);
  }

  bool Remove(int key) {
    int const p = Find(key);
    if (p < 0) return false;
    int const slots = static_cast<int>(rows.size());
    rows[static_cast<std::size_t>(p)].occupied = false;
    int j = p;
    do {
      j = j == 0 ? slots - 1 : j - 1;
    } while (At(j).occupied);
    j = j + 1 == slots ? 0 : j + 1;
    --count;
    while (At(j).occupied || j == p) {
      Row const row = std::exchange(rows[static_cast<std::size_t>(j)], Row());
      if (j != p) {
        --count;
        Add(row.key, row.value);
      }
      j = j + 1 == slots ? 0 : j + 1;
    }
    return true;
  }

  void Clear() {
    rows.assign(17, Row());
    count = 0;
  }

 private:
  Row const& At(int slot) const { return rows[static_cast<std::size_t>(slot)]; }

  bool Place(std::vector<Row>& target, int key, int value) const {
    std::size_t i = hash(key) % target.size();
    for (; target[i].occupied; i = (i + 1) % target.size()) {
      if (equal(key, target[i].key)) return false;
    }
    target[i] = {key, value, true};
    return true;
  }
};
