#pragma once

namespace bench {

// Benchmarks of the peers over the same statements as the service, and of the lexers alone.
void register_peers();
void register_reads();

}  // namespace bench
