#ifndef VELLACORE_TESTS_RECORDINGRENDER_H
#define VELLACORE_TESTS_RECORDINGRENDER_H

#include "Vellacore/Render/Drawable.h"
#include "Vellacore/Render/Render.h"
#include "Vellacore/Render/RenderTarget.h"
#include "Vellacore/Render/Shader.h"
#include "Vellacore/Scene/Fog.h"
#include "Vellacore/Scene/Light.h"

#include <cstdio>
#include <string>
#include <vector>

namespace VellacoreTest {

// A renderer that writes down what the engine asks of it: each call as readable text, objects by
// name ("SetTarget(null)", "SetLight(0,L1)", "Draw(D1)"), with the matrix it was handed (identity
// for calls without one). With m_Recording off it does nothing at all, not even allocate.
class RecordingRender : public Vellacore::Render {
public:
    using Matrix = Vellacore::Matrix4T<Vellacore::Fixed>;

    static RecordingRender* Create() { return new (Vellacore::TypeInfoT<RecordingRender>::S_TypeInfo_1) RecordingRender(); }

    // The matrix of the last call with exactly this text; all zero when there is none.
    Matrix MatrixOf(std::string const& text) const
    {
        for (std::size_t i = m_Texts.size(); i-- > 0;)
            if (m_Texts[i] == text)
                return m_Matrices[i];
        return Matrix();
    }

    bool Init() override { return true; }
    void Exit() override {}
    bool IsRenderable() const override { return true; }
    Vellacore::Fixed GetAspect() const override { return Vellacore::Fixed(4) / Vellacore::Fixed(3); }
    void SetColorClearValue(Vellacore::Vector4T<float> const&) override {}
    void SetDepthClearValue(Vellacore::Fixed) override {}
    void Clear(int buffers) override { Record("Clear", Matrix::Identity, buffers); }
    void SetViewMatrix(Matrix const& view) override { Record("SetViewMatrix", view); }
    void SetProjectionMatrix(Matrix const& projection) override { Record("SetProjectionMatrix", projection); }
    void SetAmbientLight(Vellacore::Vector3T<float> const& color) override { Record("SetAmbientLight", Matrix::Identity, color); }
    void SetLights(short count) override { Record("SetLights", Matrix::Identity, count); }
    void SetLight(short slot, Vellacore::Light* light, Matrix const& placing) override { Record("SetLight", placing, slot, light); }
    void SetFog(Vellacore::Fog* fog) override { Record("SetFog", Matrix::Identity, fog); }
    void SetShader(Vellacore::Shader* shader, Vellacore::Vector4T<float> const&) override { Record("SetShader", Matrix::Identity, shader); }
    void SetTarget(Vellacore::RenderTarget* target) override { Record("SetTarget", Matrix::Identity, target); }
    void Draw(Vellacore::Drawable* drawable, Matrix const& placing) override { Record("Draw", placing, drawable); }
    void SwapBuffers() override {}

    bool m_Recording = true;
    std::vector<std::string> m_Texts;
    std::vector<Matrix> m_Matrices;

private:
    static std::string Text(int value) { return std::to_string(value); }
    template <class T>
    static std::string Text(T const* object)
    {
        return object ? object->GetName() : "null";
    }
    static std::string Text(Vellacore::Vector3T<float> const& v)
    {
        char text[48];
        std::snprintf(text, sizeof text, "%g,%g,%g", v.x, v.y, v.z);
        return text;
    }

    template <class... Args>
    void Record(char const* name, Matrix const& matrix, Args const&... args)
    {
        if (!m_Recording)
            return;
        std::string text;
        ((text += (text.empty() ? "" : ",") + Text(args)), ...);
        m_Texts.push_back(std::string(name) + "(" + text + ")");
        m_Matrices.push_back(matrix);
    }
};

} // namespace VellacoreTest

#endif
