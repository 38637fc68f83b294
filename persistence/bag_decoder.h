// The bag form of saved state: a tree laid flat into the items of one reader. The items of a node
// have its prefix in front of their names; that of a child node is the parent's, its name and "//":
//
//     valueNames    the entries of the root's values: "volume,real"
//     volume,real   the value
//     nodeNames     the names of its child nodes: "left"
//     left//valueNames, left//nodeNames and so on: the same of the child node
//
// An entry is a value's name and the text of its kind; for the kind "value" the text of its tag
// stands between them. In a list's place an empty value says that there is nothing in it.
#pragma once

#include "persistence/tree.h"
#include "tarvo/persistence.h"

namespace TARVO {

// Gives the root of a new tree. Raises vask_link_error: what a slot of the bag gave, RC_END_OF_DATA
// for an entry that isn't of this form, RC_BAD_DATA for an item of a kind that can't be there, or
// if nodes go too deep.
tarvo::Reference<TARVOPersistenceNode> decodeBag(IVaskPersistReader* bag);

} // namespace TARVO
