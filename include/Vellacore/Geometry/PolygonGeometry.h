#ifndef VELLACORE_GEOMETRY_POLYGONGEOMETRY_H
#define VELLACORE_GEOMETRY_POLYGONGEOMETRY_H

#include "Vellacore/Geometry/PolygonGeometryData.h"
#include "Vellacore/Math/Fixed.h"
#include "Vellacore/Render/Drawable.h"

namespace Vellacore {

// An indexed mesh of triangles or lines. The arrays live in a data object that several geometries
// may share; every setter copies into it and marks the array changed for the renderer. Arrays are
// float because they go to the graphics hardware as they are.
class PolygonGeometry : public Drawable {
public:
    static PolygonGeometry* Create();
    ~PolygonGeometry() override;

    // The arrays are set directly; nothing to rebuild before drawing.
    void UpdateDrawable() override;

    // First elements of the arrays as the renderer reads them; subclasses that compute their own
    // arrays answer with those.
    virtual Vector2T<float> const* GetTexCoordPointer(int set) const;
    virtual U16 const* GetIndexPointer() const;
    virtual Vector3T<float> const* GetVertexPointer() const;
    virtual Vector4T<float> const* GetColorPointer() const;
    virtual Vector3T<float> const* GetNormalPointer() const;
    virtual int GetNumPrimitives() const;

    // Texture-coordinate sets other than 0 and 1 do not exist: setting one is ignored, reading
    // one gives nothing.
    void SetIndexArray(Array<U16> const& indices);
    void SetVertexArray(Array<Vector3T<float>> const& vertices);
    void SetNormalArray(Array<Vector3T<float>> const& normals);
    void SetColorArray(Array<Vector4T<float>> const& colors);
    void SetTexCoordArray(int set, Array<Vector2T<float>> const& texCoords);
    void GetIndexArray(Array<U16>& indices) const;
    void GetVertexArray(Array<Vector3T<float>>& vertices) const;
    void GetNormalArray(Array<Vector3T<float>>& normals) const;
    void GetColorArray(Array<Vector4T<float>>& colors) const;
    void GetTexCoordArray(int set, Array<Vector2T<float>>& texCoords) const;
    int GetNumIndices() const;
    int GetNumVertices() const;
    int GetNumNormals() const;
    int GetNumColors() const;
    int GetNumTexCoords(int set) const;

    // The primitive count is derived when the indices are set, so the type must come first.
    // Changing the type leaves exactly the index bit in the change flags.
    void SetPrimiviteType(int type);
    int GetPrimiviteType() const;
    U32 GetChangeFlags() const;

    void SetStatic(unsigned int bits);
    void UnsetStatic(unsigned int bits);
    // Whether any of the bits is set.
    bool IsStatic(unsigned int bits) const;

    void SetRenderPolygonHandle(RenderPolygonHandle* handle);
    RenderPolygonHandle* GetRenderPolygonHandle() const;

    // Shares another geometry's arrays (and their render handle). A geometry always has data, so
    // null is ignored.
    void SetData(PolygonGeometryData* data);
    PolygonGeometryData* GetData() const;

    // Ray query; a plain mesh has no answer and leaves the outputs as they are.
    bool Intersect(Vector3T<Fixed> const& origin, Vector3T<Fixed> const& direction, Fixed& distance, Fixed& u, Fixed& v) const;

protected:
    PolygonGeometry();

private:
    Ptr<PolygonGeometryData> m_Data;
};

} // namespace Vellacore

#endif
