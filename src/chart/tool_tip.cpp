#include "chart/tool_tip.h"
