// Where the last syntax error of the calling thread is in the whole text.
#pragma once

#include "TAVOParserExt.h"

namespace tavo {

struct LastLocation {
  bool known = false;
  TAVOErrorLocation location = {};
};

inline LastLocation& last_location() {
  static thread_local constinit LastLocation location;
  return location;
}

}  // namespace tavo
