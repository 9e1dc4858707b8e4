#include "sample/SampleViews.h"

#include "sample/SampleDrawings.h"

#include <gp_Ax2.hxx>
#include <initializer_list>
#include <string>
#include <vector>

namespace kesview {
namespace {

std::string list(const std::vector<std::string>& items) {
    std::string text = "(";
    for (const std::string& item : items)
        text += (text.size() > 1 ? "," : "") + item;
    return text + ")";
}

std::string triple(const gp_XYZ& at) {
    return list({real(at.X()), real(at.Y()), real(at.Z())});
}

std::string direction(ExchangeText& text, const gp_Dir& along) {
    return reference(text.Add("DIRECTION(''," + triple(along.XYZ()) + ")"));
}

std::string point(ExchangeText& text, const gp_Pnt& at) {
    return reference(text.Add("CARTESIAN_POINT(''," + triple(at.XYZ()) + ")"));
}

std::string placement(ExchangeText& text, const gp_Ax2& frame) {
    const std::string location = point(text, frame.Location());
    const std::string z = direction(text, frame.Direction());
    const std::string x = direction(text, frame.XDirection());
    return reference(text.Add("AXIS2_PLACEMENT_3D(''," + location + "," + z + "," + x + ")"));
}

/// The model of all annotations, which the writer makes.
int draughtingModel(const ExchangeText& text) {
    return text.Find("DRAUGHTING_MODEL('',");
}

std::string context(const ExchangeText& text) {
    return reference(text.Reference(draughtingModel(text), -1));
}

std::string curveSet(ExchangeText& text, const PlaneDrawing& drawing) {
    std::vector<std::string> points;
    std::vector<std::string> lines;
    for (const std::vector<gp_Pnt>& line : drawing.Lines()) {
        std::vector<std::string> indices;
        for (const gp_Pnt& at : line) {
            points.push_back(triple(at.XYZ()));
            indices.push_back(std::to_string(points.size()));
        }
        lines.push_back(list(indices));
    }
    const int coordinates =
        text.Add("COORDINATES_LIST(''," + std::to_string(points.size()) + "," + list(points) + ")");
    return reference(
        text.Add("TESSELLATED_CURVE_SET(''," + reference(coordinates) + "," + list(lines) + ")"));
}

/// A camera's own frame, upright: z runs into the scene, x to the left.
gp_Ax2 cameraFrame(const gp_Pnt& eye, const gp_Pnt& target) {
    const gp_Dir sight(gp_Vec(eye, target));
    return {eye, sight, gp::DZ().Crossed(sight)};
}

/// Gives the arguments that all cameras have.
std::string cameraArguments(ExchangeText& text, const std::string& name, const gp_Ax2& frame,
                            double distance, double width, double height) {
    const std::string reference1 = placement(text, frame);
    const std::string center = point(text, gp::Origin());
    const std::string corner =
        placement(text, {gp_Pnt(-width / 2, -height / 2, distance), gp::DZ(), gp::DX()});
    const int window =
        text.Add("PLANAR_BOX(''," + real(width) + "," + real(height) + "," + corner + ")");
    const int volume = text.Add("VIEW_VOLUME(.PARALLEL.," + center + "," + real(distance) +
                                ",0.,.F.,0.,.F.,.F.," + reference(window) + ")");
    return "'" + name + "'," + reference1 + "," + reference(volume);
}

/// A view shows its camera and annotations, each with its plane.
void addView(ExchangeText& text, const std::string& name, int camera,
             std::initializer_list<const char*> drawings) {
    std::vector<std::string> items = {reference(camera)};
    for (const char* drawing : drawings) {
        const std::string start = std::string("DRAUGHTING_CALLOUT('") + drawing + "',";
        items.push_back(reference(text.Find(start)));
    }
    text.Add("DRAUGHTING_MODEL('" + name + "'," + list(items) + "," + context(text) + ")");
}

}  // namespace

void addNote(ExchangeText& text) {
    const int drawn = text.Find("TESSELLATED_ANNOTATION_OCCURRENCE(");
    const std::string style = reference(text.Reference(drawn, 0));
    const std::string bracket = reference(text.Reference(text.Find("DATUM_FEATURE("), 0));
    const std::string model = reference(draughtingModel(text));

    const std::string curves = curveSet(text, drawNote());
    const int geometry = text.Add("TESSELLATED_GEOMETRIC_SET('',(" + curves + "))");
    const int occurrence = text.Add("TESSELLATED_ANNOTATION_OCCURRENCE('',(" + style + ")," +
                                    reference(geometry) + ")");
    const std::string callout =
        reference(text.Add(std::string("DRAUGHTING_CALLOUT('") + SampleDrawing::note + "',(" +
                           reference(occurrence) + "))"));
    text.Add("DRAUGHTING_MODEL_ITEM_ASSOCIATION('PMI representation to presentation link',''," +
             bracket + "," + model + "," + callout + ")");
    text.Replace("DRAUGHTING_MODEL('',(", "DRAUGHTING_MODEL('',(" + callout + ",");
}

void addViews(ExchangeText& text) {
    const gp_Pnt middle(45, 54, 25);
    const gp_Pnt corner = middle.Translated(gp_Vec(240, -180, 160));
    const std::string boreArguments = cameraArguments(text, "Bore", cameraFrame(corner, middle),
                                                      corner.Distance(middle), 240, 150);
    const int bore = text.Add("CAMERA_MODEL_D3(" + boreArguments + ")");
    addView(text, "Bore", bore, {SampleDrawing::diameter, SampleDrawing::position});

    const gp_Pnt before(45, -300, 15);
    const std::string arguments =
        cameraArguments(text, "Section A-A", cameraFrame(before, {45, 30, 15}), 330, 208, 130);
    const int cut =
        text.Add("PLANE(''," + placement(text, gp_Ax2(gp_Pnt(0, 30, 0), gp::DY(), gp::DX())) + ")");
    const int section =
        text.Add("CAMERA_MODEL_D3_MULTI_CLIPPING(" + arguments + ",(" + reference(cut) + "))");
    addView(
        text, "Section A-A", section,
        {SampleDrawing::height, SampleDrawing::datumA, SampleDrawing::datumB, SampleDrawing::note});
}

}  // namespace kesview
