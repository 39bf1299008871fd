// Named set of entities.
#pragma once

#include "VRELExport.h"
#include "VRELHashList.h"
#include "VRELString.h"
#include "VRINResult.h"

// Selection set: a name, a flag for the current set of the document, and a set of pointers to entities.
//
//   VRELSelectionSet fasteners(L"Fasteners", false);
//   fasteners.AddMember(bolt);
//   void* member = nullptr;
//   for (int i = 0; fasteners.GetMemberAtIndex(i, member); ++i) Visit(member);
//
// Ownership: the entities belong to the caller; the set does not access them.
// Performance: a member is found in constant time, but GetMemberAtIndex iterates from the start, so that a loop over
// all indexes takes quadratic time.
// Thread safety: none, also for const objects: GetMemberAtIndex uses the cursor of the hash list.
class VREL_EXPORT VRELSelectionSet {
 public:
  // Creates a set without members.
  VRELSelectionSet(VRELString const& name, bool current);
  // Does not compile: a pointer, such as a string literal, would convert to bool.
  template <class T>
  VRELSelectionSet(VRELString const& name, T* current) = delete;
  // Copies name, flag and members; the copy has its own list in the same order.
  VRELSelectionSet(VRELSelectionSet const& other);
  VRELSelectionSet& operator=(VRELSelectionSet const& other);
  // Does not delete the members.
  virtual ~VRELSelectionSet();

  VRELString GetName() const;
  bool IsCurrent() const noexcept;

  // Adds a member. Adding a member again has no effect and succeeds.
  // Errors: VREL_E_FAIL for null.
  VRINResult AddMember(void* member);
  bool IsMember(void* member) const;
  int SelectionSetLength() const noexcept;
  // Returns the member with this index in the order of the slots of the hash list, which changes when the set grows. A
  // negative index is taken as 0. Returns false and leaves `member` unchanged if the index is not below the length.
  bool GetMemberAtIndex(int index, void*& member) const;

 private:
  void init(VRELSelectionSet const& other);

  VRELString nameText;
  bool currentSet;
  VRELHashList<void*> members;
};
