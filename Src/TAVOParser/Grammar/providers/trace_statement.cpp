// A statement that only sets the trace level. It stores nothing, and text after it is ignored.
#include "Grammar/providers/common_options.h"
#include "Grammar/providers/providers.h"

namespace tavo {

constexpr StatementRule tavo_set_trace_level = {
    .name = "tavo_set_trace_level",
    .head = cmn_opt_parm_trclevel,
};

}  // namespace tavo
