#include "Vellacore/Core/Object.h"

#include <utility>

namespace Vellacore {

Object::Object() = default;

Object::Object(char const* name) : m_Name(name) {}

Object::~Object() = default;

std::string Object::GetName() const
{
    return m_Name;
}

void Object::SetName(std::string name)
{
    m_Name = std::move(name);
}

bool Object::Exists(Object const* object)
{
    return object != nullptr;
}

} // namespace Vellacore
