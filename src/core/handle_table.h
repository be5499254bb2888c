// The fixed object tables behind the integer handles of the exported families.
//
// A handle is the index of a slot. Slot 0 is never handed out, so that 0 can
// mean "no object". The lowest free slot always wins. The table never grows:
// its size, and the answer when it is full, belong to the family and are part
// of the boundary that the front ends rely on.
#pragma once

#include <new>
#include <utility>

namespace tq {

template <class T, int kSlots, int kFullAnswer>
class HandleTable {
 public:
  static constexpr int kSize = kSlots;
  static constexpr int kFull = kFullAnswer;

  // Makes a new object in the lowest free slot. When no slot is free the
  // family's full-table answer comes back and nothing is made. When the
  // allocation itself fails the slot stays empty but its number is still the
  // answer: the caller then holds a handle with nothing behind it, and every
  // later call answers as for an empty handle.
  template <class... Args>
  int New(Args&&... args) {
    int h = FreeSlot();
    if (h == 0) return kFullAnswer;
    slots_[h].object = new (std::nothrow) T(std::forward<Args>(args)...);
    slots_[h].spent = false;
    return h;
  }

  // Stores an object that the caller has already made; answers the handle,
  // or the full-table answer (and the object is deleted).
  int Adopt(T* object) {
    int h = FreeSlot();
    if (h == 0) {
      delete object;
      return kFullAnswer;
    }
    slots_[h].object = object;
    slots_[h].spent = false;
    return h;
  }

  // The object behind a handle, or null for 0, an empty, spent or
  // out-of-range slot.
  T* Get(int h) const {
    if (h <= 0 || h >= kSlots) return nullptr;
    return slots_[h].object;
  }

  // Frees the object and empties the slot so that the number can be reused.
  void Delete(int h) {
    if (h <= 0 || h >= kSlots) return;
    delete slots_[h].object;
    slots_[h].object = nullptr;
    slots_[h].spent = false;
  }

  // Frees the object but keeps the slot taken for the life of the process.
  // The English text reader gives its handles back this way, so each of its
  // handles is used once.
  void Spend(int h) {
    if (h <= 0 || h >= kSlots) return;
    delete slots_[h].object;
    slots_[h].object = nullptr;
    slots_[h].spent = true;
  }

 private:
  struct Slot {
    T* object = nullptr;
    bool spent = false;
  };

  int FreeSlot() const {
    for (int h = 1; h < kSlots; ++h) {
      if (slots_[h].object == nullptr && !slots_[h].spent) return h;
    }
    return 0;
  }

  Slot slots_[kSlots];
};

}  // namespace tq
