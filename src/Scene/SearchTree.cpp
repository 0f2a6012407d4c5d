#include "Vellacore/Scene/SearchTree.h"

namespace Vellacore {

namespace {

// The name travels by reference through the recursion; only the entry point copies it.
Object* FindByName(Node* node, std::string const& name)
{
    if (!node)
        return nullptr;
    if (node->GetName() == name)
        return node;
    if (Group* group = node->Cast<Group>()) {
        for (int i = 0; i < group->GetNumChildren(); ++i) {
            if (Object* found = FindByName(group->GetChild(i), name))
                return found;
        }
    } else if (Container* container = node->Cast<Container>()) {
        for (int i = 0; i < container->GetNumObjects(); ++i) {
            Object* object = container->GetObject(i);
            if (object && object->GetName() == name)
                return object;
        }
    }
    return nullptr;
}

} // namespace

Object* SearchTree(Node* node, std::string name)
{
    return FindByName(node, name);
}

} // namespace Vellacore
