// What most tests include; read once for all of them, since it takes longer to read than most of them
// take to compile.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
