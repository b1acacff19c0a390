#include "core/http_control.h"
