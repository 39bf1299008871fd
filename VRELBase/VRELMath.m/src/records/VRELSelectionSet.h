// A named set of a model's entities.
#pragma once

#include "VRELExport.h"
#include "VRELHashList.h"
#include "VRELString.h"
#include "VRINResult.h"

// A name, a mark for the one set that is current in its document, and the addresses of entities, each there once. The
// entities are neither looked at nor owned.
//
//   VRELSelectionSet fasteners(L"Fasteners", false);
//   fasteners.AddMember(bolt);
//   void* member = nullptr;
//   for (int i = 0; fasteners.GetMemberAtIndex(i, member); ++i) Visit(member);
//
// Each look-up by index walks from the start, so that such a loop costs a quadratic number of steps. It also uses the
// one cursor of the set: a set that is read stays on one thread.
class VREL_EXPORT VRELSelectionSet {
 public:
  // Without members.
  VRELSelectionSet(VRELString const& name, bool current);
  // A copy has a member list of its own, in the same order.
  VRELSelectionSet(VRELSelectionSet const& other);
  VRELSelectionSet& operator=(VRELSelectionSet const& other);
  // The members live on.
  virtual ~VRELSelectionSet();

  VRELString GetName() const;
  bool IsCurrent() const noexcept;

  // VREL_E_FAIL for null. An entity that is there already stays there once, which is a success too.
  VRINResult AddMember(void* member);
  bool IsMember(void* member) const;
  int SelectionSetLength() const noexcept;
  // Members stand in the order of their slots in the hash list, which changes when the set grows; an index below 0
  // counts as 0. False beyond the last one, and then `member` is left alone.
  bool GetMemberAtIndex(int index, void*& member) const;

 private:
  void init(VRELSelectionSet const& other);

  VRELString nameText;
  bool currentSet;
  VRELHashList<void*> members;
};
