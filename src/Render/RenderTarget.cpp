#include "Vellacore/Render/RenderTarget.h"

namespace Vellacore {

RenderTarget* RenderTarget::Create()
{
    return new (TypeInfoT<RenderTarget>::S_TypeInfo_1) RenderTarget();
}

RenderTarget::RenderTarget() : m_Width(0), m_Height(0) {}

RenderTarget::~RenderTarget() = default;

void RenderTarget::SetWidth(int width)
{
    m_Width = width;
}

int RenderTarget::GetWidth() const
{
    return m_Width;
}

void RenderTarget::SetHeight(int height)
{
    m_Height = height;
}

int RenderTarget::GetHeight() const
{
    return m_Height;
}

Fixed RenderTarget::GetAspect() const
{
    return Fixed(m_Width) / Fixed(m_Height);
}

} // namespace Vellacore
