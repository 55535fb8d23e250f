#pragma once

// A double of the framework: what the program uses of it.

#include <ServiceManagement/SMAppService.h>
