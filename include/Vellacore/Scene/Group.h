#ifndef VELLACORE_SCENE_GROUP_H
#define VELLACORE_SCENE_GROUP_H

#include "Vellacore/Memory/Array.h"
#include "Vellacore/Memory/Ptr.h"
#include "Vellacore/Scene/Node.h"

namespace Vellacore {

// A node that owns other nodes. Children are kept in insertion order, which is the drawing and
// search order.
class Group : public Node {
public:
    static Group* Create();
    // Detaches every child: children held elsewhere live on as roots with a null parent.
    ~Group() override;

    // The list halves of Node::SetParent; neither touches the child's parent link, so outside
    // SetParent they break the tree's invariant. A child is listed at most once.
    void AddChild(Node* child);
    void RemoveChild(Node* child);

    int GetNumChildren() const;
    // Null for an index out of range.
    Node* GetChild(int index) const;

protected:
    Group();

private:
    Array<Ptr<Node>> m_Children;
};

} // namespace Vellacore

#endif
