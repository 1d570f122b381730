// Tells which platform is loaded.
#include <cstdint>

extern "C" {

uint32_t TAVOProviderInterfaceVersion(void) {
  return 1;
}
const char* TAVOProviderName(void) {
  return "demonstration";
}

}  // extern "C"
