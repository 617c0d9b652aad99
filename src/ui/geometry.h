#pragma once

#include "platform/geometry.h"
