// Grammar and numbers stand on one level and may not include each other.
#include "numbers/number_settings.h"
