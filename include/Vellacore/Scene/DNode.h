#ifndef VELLACORE_SCENE_DNODE_H
#define VELLACORE_SCENE_DNODE_H

#include "Vellacore/Scene/Node.h"

namespace Vellacore {

// A node kind of its own for games to derive from; the engine itself makes none.
class DNode : public Node {
public:
    ~DNode() override = 0;

protected:
    DNode();
};

} // namespace Vellacore

#endif
