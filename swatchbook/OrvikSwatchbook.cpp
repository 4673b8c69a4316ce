#include "OrvikSwatchbook.h"

OrvikSwatchbook::~OrvikSwatchbook() = default;
