#ifndef VELLACORE_SCENE_SEARCHTREE_H
#define VELLACORE_SCENE_SEARCHTREE_H

#include "Vellacore/Memory/Array.h"
#include "Vellacore/Memory/Ptr.h"
#include "Vellacore/Scene/Container.h"
#include "Vellacore/Scene/Group.h"

#include <string>

namespace Vellacore {

// Searches walk the tree depth first in pre-order (a node before its children, an earlier child's
// whole subtree before a later child). The objects of a Container are looked at themselves but
// never searched into.

// The first object named exactly `name`, or null.
Object* SearchTree(Node* node, std::string name);

// Appends every object that is a T (or derives from it) to `result`, which is never cleared. An
// object reached twice is appended twice.
template <class T>
void SearchTreeType(Node* node, Array<Ptr<T>>& result)
{
    if (!node)
        return;
    if (T* match = node->Cast<T>())
        result.push_back(match);
    if (Group* group = node->Cast<Group>()) {
        for (int i = 0; i < group->GetNumChildren(); ++i)
            SearchTreeType(group->GetChild(i), result);
    } else if (Container* container = node->Cast<Container>()) {
        for (int i = 0; i < container->GetNumObjects(); ++i) {
            Object* object = container->GetObject(i);
            if (T* match = object ? object->Cast<T>() : nullptr)
                result.push_back(match);
        }
    }
}

} // namespace Vellacore

#endif
