// The exported blank texts: eight times 32 blanks.
#include "TAVONumericText.h"

extern "C" {

const char PXSpaces[257] =
    "                                "
    "                                "
    "                                "
    "                                "
    "                                "
    "                                "
    "                                "
    "                                ";

const wchar_t PXSpacesW[257] =
    L"                                "
    L"                                "
    L"                                "
    L"                                "
    L"                                "
    L"                                "
    L"                                "
    L"                                ";

}  // extern "C"
