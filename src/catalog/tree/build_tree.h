#pragma once

#include "catalog/media/entry_list.h"
#include "catalog/tree/grouping_order.h"
#include "catalog/tree/tree_sink.h"

namespace kelvo {

// Groups the entries into an empty tree and stores each one's node in its item word; 0 where there
// is none: the entry has no path, or its node or a node above it could not be inserted. Without
// memory for the grouping itself the tree stays empty.
void BuildTree(EntryList& entries, GroupingOrder order, TreeSink& sink) noexcept;

// The two kinds of orders.
void BuildGroups(EntryList& entries, const NodeKind* levels, size_t level_count,
                 TreeSink& sink) noexcept;
void BuildFolders(EntryList& entries, TreeSink& sink) noexcept;

}  // namespace kelvo
