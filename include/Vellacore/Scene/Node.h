#ifndef VELLACORE_SCENE_NODE_H
#define VELLACORE_SCENE_NODE_H

#include "Vellacore/Core/Object.h"
#include "Vellacore/Core/Types.h"

namespace Vellacore {

class Group;
class Transform;

// Element of the scene tree. A node is owned by the group that lists it; its parent link is a plain
// pointer that holds no reference, so a tree is kept alive by one reference to its root.
class Node : public Object {
public:
    ~Node() override = 0;

    // The only public way to change membership: leaves the old parent and goes to the end of the
    // new one's children (null detaches). A node that only its old parent held is destroyed when
    // it is detached.
    void SetParent(Group* group);
    Group* GetParent() const;
    // The nearest ancestor that is a Transform, starting at the parent (never the node itself).
    Transform* GetParentTransform() const;

    // Zero hides the node and its whole subtree from drawing.
    void SetVisibility(unsigned int visibility);
    unsigned int GetVisibility() const;

protected:
    Node();

private:
    Group* m_Parent;
    U32 m_Visibility;
};

} // namespace Vellacore

#endif
