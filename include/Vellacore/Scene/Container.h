#ifndef VELLACORE_SCENE_CONTAINER_H
#define VELLACORE_SCENE_CONTAINER_H

#include "Vellacore/Memory/Array.h"
#include "Vellacore/Memory/Ptr.h"
#include "Vellacore/Scene/Node.h"

namespace Vellacore {

// A leaf that keeps arbitrary objects (materials, textures, tracks) alive beside the tree. The
// same object may be added more than once and is then held once per entry.
class Container : public Node {
public:
    static Container* Create();
    ~Container() override;

    void AddObject(Object* object);
    // Later entries move down by one; an index out of range is ignored.
    void RemoveObject(int index);
    // Null for an index out of range.
    Object* GetObject(int index) const;
    int GetNumObjects() const;

protected:
    Container();

private:
    Array<Ptr<Object>> m_Objects;
};

} // namespace Vellacore

#endif
