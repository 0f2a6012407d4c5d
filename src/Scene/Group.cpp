#include "Vellacore/Scene/Group.h"

#include <algorithm>

namespace Vellacore {

Group* Group::Create()
{
    return new (TypeInfoT<Group>::S_TypeInfo_1) Group();
}

Group::Group() = default;

Group::~Group()
{
    while (!m_Children.empty()) {
        Ptr<Node> child = m_Children.front();
        // A child listed by AddChild alone does not name this group; detaching it through
        // SetParent would leave it listed and never end the loop.
        if (child->GetParent() == this)
            child->SetParent(nullptr);
        else
            RemoveChild(child);
    }
}

void Group::AddChild(Node* child)
{
    if (std::find(m_Children.begin(), m_Children.end(), child) == m_Children.end())
        m_Children.push_back(child);
}

void Group::RemoveChild(Node* child)
{
    auto const found = std::find(m_Children.begin(), m_Children.end(), child);
    if (found == m_Children.end())
        return;
    // The list's reference is dropped only once the list is consistent again, in case it was the
    // last one and the child's destruction reaches back into the tree.
    Ptr<Node> removed = *found;
    m_Children.erase(found);
}

int Group::GetNumChildren() const
{
    return static_cast<int>(m_Children.size());
}

Node* Group::GetChild(int index) const
{
    return index >= 0 && index < GetNumChildren() ? m_Children[index].Get() : nullptr;
}

} // namespace Vellacore
