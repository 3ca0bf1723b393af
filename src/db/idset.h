// Product id sets: what tavd/tavdidset.h does not show.
#pragma once

#include "tavd/tavdidset.h"

namespace tavd {

int idset_is_wildchar(const IdSet* set, char c);
int idset_is_separator(const IdSet* set, char c);

// Whether the concrete id `code` fits `pattern`, in which a wildcard stands for one field: 1 or 0. Null and
// empty texts fit nothing.
int idset_match(const IdSet* set, const char* code, const char* pattern);

// The order in which items are asked: negative if `a` comes first, positive if `b`. Items that do not match
// come last, in no order among themselves: each of them is behind the other.
int idset_compare(const IdSet* set, const IdSetItem* a, const IdSetItem* b);

}  // namespace tavd
