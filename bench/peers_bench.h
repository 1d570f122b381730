#pragma once

namespace bench {

// The peers over the statements that the service is measured with, and the lexers alone.
void register_peers();

}  // namespace bench
