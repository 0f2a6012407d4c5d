#include "Vellacore/Scene/Node.h"

#include "Vellacore/Memory/Ptr.h"
#include "Vellacore/Scene/Group.h"
#include "Vellacore/Scene/Transform.h"

namespace Vellacore {

Node::Node() : m_Parent(nullptr), m_Visibility(1) {}

Node::~Node() = default;

void Node::SetParent(Group* group)
{
    // Re-setting the parent must not move the node to the end of its list.
    if (group == m_Parent)
        return;
    // The old parent may hold the only reference; this one keeps the node alive until it is listed
    // again, and destroys it on leaving if nothing else holds it.
    Ptr<Node> self(this);
    if (m_Parent)
        m_Parent->RemoveChild(this);
    m_Parent = group;
    if (group)
        group->AddChild(this);
}

Group* Node::GetParent() const
{
    return m_Parent;
}

Transform* Node::GetParentTransform() const
{
    for (Group* ancestor = m_Parent; ancestor; ancestor = ancestor->GetParent()) {
        if (Transform* transform = ancestor->Cast<Transform>())
            return transform;
    }
    return nullptr;
}

void Node::SetVisibility(unsigned int visibility)
{
    m_Visibility = visibility;
}

unsigned int Node::GetVisibility() const
{
    return m_Visibility;
}

} // namespace Vellacore
