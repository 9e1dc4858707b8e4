#pragma once

#include <KesVizCore/Export.h>
#include <KesVizCore/pmi/VizPMICollection.h>

#include <cstdint>
#include <string>

namespace KesVizCore {

/// A saved camera with the annotations that it shows, and perhaps a clipping plane.
///
/// The target is the origin, and the up vector the V axis, of the frame of its base,
/// VizPMICollection.
///
/// @par Units and ranges
/// Points and vectors are 3 floats, points in model units. The perspective view angle is in
/// degrees, the zoom factor without unit. All is stored unchecked, but for the orientation.
///
/// @par Ownership
/// Made by AVizCaptureLoader, or by the host; owned by its VizPMIContainer.
///
/// @par Errors
/// SetOrientation throws std::invalid_argument, as Normalize() does; std::bad_alloc when memory
/// runs out for a text or a copy. Arrays must not be null.
///
/// @par Threads
/// A model is used by one thread at a time.
class KESVIZCORE_API VizCapture : public VizPMICollection {
public:
    /// How the camera projects.
    enum CameraType : std::int32_t { UndefinedCamera = 0, Perspective = 1, Orthographic = 2 };

    static std::string TypeID();  ///< "Capture"

    VizCapture();
    VizCapture(const VizCapture& other);             ///< member by member
    VizCapture& operator=(const VizCapture& other);  ///< member by member

    std::string GetElementType() const override;
    ~VizCapture() override;

    /// Sets the camera: the frame's origin becomes @p target, V the normalised @p up, U the cross
    /// product of V and the normalised line of sight from target to eye, which is shorter than 1
    /// unless @p up is perpendicular to that line. 3 floats each are copied. Always true.
    ///
    /// @throws std::invalid_argument for an up vector without length, or an eye at the target. Eye,
    ///     target and up are stored by then, the up vector normalised in the second case; U and
    ///     IsViewOriented() are as before.
    bool SetOrientation(float* eye, float* target, float* up);
    /// Writes 3 floats each: eye, target and normalised up vector; whether an orientation was ever
    /// set.
    bool GetOrientation(float* eye, float* target, float* up) const;
    /// Copies 3 floats each: a point of the plane and two directions in it.
    void SetClippingPlane(const float* origin, const float* u, const float* v);
    /// Writes 3 floats each, also of the default plane, which is 0 but for v, (0, 1, 0); whether
    /// one was ever set.
    bool GetClippingPlane(float* origin, float* u, float* v) const;

    CameraType GetCameraType() const;            ///< UndefinedCamera at first
    void SetCameraType(const CameraType& type);  ///< any number
    /// Degrees; 13.5 at first.
    float GetPerspectiveViewAngle() const;
    void SetPerspectiveViewAngle(float angle);  ///< degrees
    /// 1.0 at first.
    float GetOrthographicZoomFactor() const;
    void SetOrthographicZoomFactor(float factor);  ///< without unit
    std::wstring GetHiddenText() const;            ///< empty at first; the host's to give a meaning
    void SetHiddenText(const std::wstring& text);  ///< takes no part in the dump

    /// A line each for name, ids, active, hidden and camera type; for every camera type but 0 also
    /// its values, and for a clipping plane that was set its triples. A value that takes more than
    /// 63 characters loses its line.
    std::wstring GetCaptureAsString() const;

private:
    float _eye[3];
    float _clippingOrigin[3];
    float _clippingU[3];
    float _clippingV[3];
    bool _clippingPlaneSet;
    float _perspectiveViewAngle;
    float _orthographicZoomFactor;
    CameraType _cameraType;
    bool _orientationSet;
    std::wstring _hiddenText;
};

}  // namespace KesVizCore
