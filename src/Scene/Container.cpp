#include "Vellacore/Scene/Container.h"

namespace Vellacore {

Container* Container::Create()
{
    return new (TypeInfoT<Container>::S_TypeInfo_1) Container();
}

Container::Container() = default;

// Released first to last, which the vector's own destruction does not promise.
Container::~Container()
{
    for (Ptr<Object>& object : m_Objects)
        object = nullptr;
}

void Container::AddObject(Object* object)
{
    m_Objects.push_back(object);
}

void Container::RemoveObject(int index)
{
    if (index >= 0 && index < GetNumObjects())
        m_Objects.erase(m_Objects.begin() + index);
}

Object* Container::GetObject(int index) const
{
    return index >= 0 && index < GetNumObjects() ? m_Objects[index].Get() : nullptr;
}

int Container::GetNumObjects() const
{
    return static_cast<int>(m_Objects.size());
}

} // namespace Vellacore
