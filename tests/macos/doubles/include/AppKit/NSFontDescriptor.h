#pragma once

#include <Foundation/Foundation.h>

using NSFontWeight = CGFloat;

FOUNDATION_EXPORT const NSFontWeight NSFontWeightRegular;
