#include "layout_in_c.h"

#include "TAVOErrorHandler.h"
#include "TAVONumericText.h"
#include "TAVOParser.h"
#include "TAVOParserExt.h"

#define LAYOUT_SIZE(type) {"size of " #type, sizeof(type)},
#define LAYOUT_OFFSET(type, member) {#type "." #member, offsetof(type, member)},

const struct Layout kLayoutInC[] = {
#include "layout_list.h"
};
const size_t kLayoutInCCount = sizeof kLayoutInC / sizeof kLayoutInC[0];
