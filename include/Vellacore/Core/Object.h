#ifndef VELLACORE_CORE_OBJECT_H
#define VELLACORE_CORE_OBJECT_H

#include <string>

namespace Vellacore {

// Root of every engine class made at run time. Objects come from their class's Create() (a typed
// allocation with a counted header) and derive from Object by single inheritance only, so that
// the object's address is the address the header sits in front of.
class Object {
public:
    Object();
    explicit Object(char const* name);
    virtual ~Object() = 0;

    std::string GetName() const;
    void SetName(std::string name);

    // Whether the dynamic type is T or derives from it; false through a null pointer.
    template <class T>
    bool Is() const
    {
        return Exists(this) && dynamic_cast<T const*>(this) != nullptr;
    }

    // The object as a T, or null if it is not one (or is null itself).
    template <class T>
    T* Cast()
    {
        return Exists(this) ? dynamic_cast<T*>(this) : nullptr;
    }

private:
    // Out of line on purpose: compilers may assume this is never null and fold an inline test
    // away, but they cannot see through a call into the library.
    static bool Exists(Object const* object);

    std::string m_Name;
};

} // namespace Vellacore

#endif
