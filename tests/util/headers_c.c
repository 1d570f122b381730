/* Compiling is the test: the headers of the helpers are C11. */
#include "TAVODataTypes.h"
#include "TAVODates.h"
#include "TAVONumericText.h"
#include "TAVOServiceRecords.h"
#include "TAVOSortRandom.h"
#include "TAVOText.h"
