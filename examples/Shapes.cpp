#include "Shapes.h"

#include <cmath>

using namespace Vellacore;

namespace FirstGameShapes {

PolygonGeometry* MakeTorus(float ringRadius, float tubeRadius, int ringSegments, int tubeSegments)
{
    float const turn = 6.28318531f;
    Array<Vector3T<float>> vertices;
    Array<Vector3T<float>> normals;
    Array<Vector2T<float>> texCoords;
    // One more column and row than segments: the seams need their own texture coordinates.
    for (int i = 0; i <= ringSegments; ++i) {
        float const u = turn * static_cast<float>(i) / static_cast<float>(ringSegments);
        for (int j = 0; j <= tubeSegments; ++j) {
            float const v = turn * static_cast<float>(j) / static_cast<float>(tubeSegments);
            Vector3T<float> const normal(std::cos(v) * std::cos(u), std::sin(v), std::cos(v) * std::sin(u));
            Vector3T<float> const centre(ringRadius * std::cos(u), 0.0f, ringRadius * std::sin(u));
            vertices.push_back(centre + normal * tubeRadius);
            normals.push_back(normal);
            texCoords.push_back(Vector2T<float>(4.0f * static_cast<float>(i) / static_cast<float>(ringSegments),
                2.0f * static_cast<float>(j) / static_cast<float>(tubeSegments)));
        }
    }
    // Counter-clockwise seen from outside: along the tube first, then along the ring.
    Array<U16> indices;
    int const column = tubeSegments + 1;
    for (int i = 0; i < ringSegments; ++i)
        for (int j = 0; j < tubeSegments; ++j) {
            U16 const a = static_cast<U16>(i * column + j);
            U16 const b = static_cast<U16>(a + 1);
            U16 const c = static_cast<U16>(a + column);
            U16 const d = static_cast<U16>(c + 1);
            indices.insert(indices.end(), { a, b, c, b, d, c });
        }
    PolygonGeometry* torus = PolygonGeometry::Create();
    torus->SetVertexArray(vertices);
    torus->SetNormalArray(normals);
    torus->SetTexCoordArray(0, texCoords);
    torus->SetIndexArray(indices);
    return torus;
}

PolygonGeometry* MakeFloor(float halfSize, float height, float tiles)
{
    PolygonGeometry* floor = PolygonGeometry::Create();
    floor->SetVertexArray({ { -halfSize, height, -halfSize }, { -halfSize, height, halfSize }, { halfSize, height, halfSize },
        { halfSize, height, -halfSize } });
    floor->SetNormalArray(Array<Vector3T<float>>(4, Vector3T<float>(0.0f, 1.0f, 0.0f)));
    floor->SetTexCoordArray(0, { { 0.0f, 0.0f }, { 0.0f, tiles }, { tiles, tiles }, { tiles, 0.0f } });
    floor->SetIndexArray({ 0, 1, 2, 0, 2, 3 });
    return floor;
}

Texture2D* MakeCheckerTexture(Colour const& a, Colour const& b, int squares)
{
    short const size = 64;
    Ptr<Image> image = Image::Create();
    if (!image->Allocate(Image::FormatRGB, size, size))
        return nullptr;
    U8* pixel = image->GetDataPtr();
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x, pixel += 3) {
            Colour const& colour = (x * squares / size + y * squares / size) % 2 == 0 ? a : b;
            pixel[0] = static_cast<U8>(colour.x * 255.0f);
            pixel[1] = static_cast<U8>(colour.y * 255.0f);
            pixel[2] = static_cast<U8>(colour.z * 255.0f);
        }
    Texture2D* texture = Texture2D::Create();
    texture->SetImage(image);
    return texture;
}

Shader* MakeLitShader(Texture* texture)
{
    Material* material = Material::Create();
    material->SetAmbientColor(Vector4T<float>(1.0f, 1.0f, 1.0f, 1.0f));
    material->SetDiffuseColor(Vector4T<float>(1.0f, 1.0f, 1.0f, 1.0f));
    Shader* shader = Shader::Create();
    shader->SetMaterial(material);
    shader->SetTexture(0, texture);
    return shader;
}

} // namespace FirstGameShapes
