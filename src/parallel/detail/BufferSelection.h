// The selection of a message buffer on one side of a ZQMPT, with the buffer found under it.
#pragma once

namespace Velmora::Tessara::ZQ::Core {
class ZQMPTBuffer;
}

namespace Velmora::Tessara::ZQ::Core::detail {

/// Sets `selection` to `key`. A different key forgets `found`, the buffer found for the old
/// one, so that a remembered buffer always belongs to the current selection.
inline void SelectKey(int &selection, ZQMPTBuffer *&found, int key) {
  if (key != selection) {
    selection = key;
    found = nullptr;
  }
}

/// Puts a selection back as it was found when the scope ends.
class SelectionKeeper {
public:
  SelectionKeeper(int &kept, ZQMPTBuffer *&keptFound) : selection(kept), found(keptFound), saved(kept) {}
  SelectionKeeper(SelectionKeeper const &) = delete;
  SelectionKeeper &operator=(SelectionKeeper const &) = delete;
  ~SelectionKeeper() { SelectKey(selection, found, saved); }

private:
  int &selection;
  ZQMPTBuffer *&found;
  int const saved;
};

} // namespace Velmora::Tessara::ZQ::Core::detail
