// A base header that reaches up to the api: the check must refuse it.
#include "api/formatter_impl.h"
