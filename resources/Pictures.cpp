#include "resources/Pictures.h"

#include "resources/BuiltInBitmaps.h"
#include "resources/ToolBitmaps.h"

#include <QFont>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

namespace {
QImage ToolImage(int id) {
    PlatformBitmap b;
    if (!LoadBitmapResource(id, &b)) return {};
    QImage image(b.width, b.height, QImage::Format_RGB32);
    for (int y = 0; y < b.height; ++y)
        for (int x = 0; x < b.width; ++x)
            image.setPixel(x, y, 0xFF000000u | b.GetPixel(x, y));
    return image;
}

QFont Face(int pixels, bool bold = false, bool italic = false) {
    QFont font("Liberation Sans");
    font.setPixelSize(pixels);
    font.setBold(bold);
    font.setItalic(italic);
    return font;
}

// Text that stands out of the picture: the same outline set back step by
// step in a dark colour, then its face in a gradient.
void ExtrudedText(QPainter& p, const QString& text, const QFont& font, QPointF at, int depth,
                  QColor side, QColor top, QColor bottom) {
    QPainterPath path;
    path.addText(at, font, text);
    p.setPen(Qt::NoPen);
    for (int i = depth; i > 0; --i) {
        p.setBrush(side.darker(100 + 6 * i));
        p.drawPath(path.translated(i * 0.8, i * 0.8));
    }
    const QRectF box = path.boundingRect();
    QLinearGradient face(box.topLeft(), box.bottomLeft());
    face.setColorAt(0, top);
    face.setColorAt(1, bottom);
    p.setBrush(face);
    p.setPen(QPen(side.darker(180), 0.8));
    p.drawPath(path);
}

void Backdrop(QPainter& p, const QRectF& r) {
    QLinearGradient sky(r.topLeft(), r.bottomLeft());
    sky.setColorAt(0, QColor(18, 32, 84));
    sky.setColorAt(1, QColor(4, 6, 20));
    p.fillRect(r, sky);
}

// A plume: a curved quill with its barbs.
void Plume(QPainter& p, QPointF base, QPointF tip, double width, QColor colour) {
    const QPointF axis = tip - base;
    const QPointF normal(-axis.y(), axis.x());
    QPainterPath vane;
    vane.moveTo(base);
    vane.cubicTo(base + axis * 0.3 + normal * width, base + axis * 0.8 + normal * width * 0.6, tip);
    vane.cubicTo(base + axis * 0.8 - normal * width * 0.4, base + axis * 0.3 - normal * width * 0.5,
                 base);
    QLinearGradient g(base, tip);
    g.setColorAt(0, colour.darker(160));
    g.setColorAt(1, colour.lighter(140));
    p.setPen(Qt::NoPen);
    p.setBrush(g);
    p.drawPath(vane);
    p.setPen(QPen(QColor(255, 255, 255, 200), 1.0));
    QPainterPath quill;
    quill.moveTo(base - axis * 0.08);
    quill.quadTo(base + axis * 0.5 + normal * width * 0.15, tip);
    p.setBrush(Qt::NoBrush);
    p.drawPath(quill);
}

QImage Logo(int w, int h) {
    QImage image(w, h, QImage::Format_RGB32);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(w / 62.0, h / 54.0);
    Backdrop(p, QRectF(0, 0, 62, 54));
    Plume(p, QPointF(8, 50), QPointF(56, 4), 0.22, QColor(40, 170, 230));
    ExtrudedText(p, "3D", Face(24, true), QPointF(8, 40), 5, QColor(150, 110, 10),
                 QColor(255, 240, 150), QColor(230, 160, 20));
    return image;
}

QImage About(int w, int h) {
    QImage image(w, h, QImage::Format_RGB32);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.scale(w / 496.0, h / 282.0);
    Backdrop(p, QRectF(0, 0, 496, 282));
    // A path across the picture, as the letters follow one.
    QPainterPath wave;
    wave.moveTo(20, 200);
    wave.cubicTo(150, 120, 300, 260, 476, 170);
    p.setPen(QPen(QColor(120, 220, 120, 160), 2, Qt::DashLine));
    p.drawPath(wave);
    Plume(p, QPointF(380, 250), QPointF(470, 30), 0.25, QColor(40, 170, 230));
    ExtrudedText(p, "FlyWORD", Face(64, true), QPointF(32, 110), 9, QColor(20, 60, 160),
                 QColor(200, 235, 255), QColor(60, 140, 255));
    ExtrudedText(p, "Plumet", Face(54, true, true), QPointF(120, 172), 8, QColor(150, 100, 10),
                 QColor(255, 245, 170), QColor(240, 160, 30));
    p.setPen(QColor(230, 230, 240));
    p.setFont(Face(15, true));
    p.drawText(QPointF(34, 40), "Lumerra 3D");
    p.setFont(Face(12));
    p.setPen(QColor(190, 200, 220));
    // Two short lines, clear of the plume on the right.
    p.drawText(QPointF(34, 222), "Extruded 3D text set along a path, lit, textured");
    p.drawText(QPointF(34, 240), "and rendered into your image.");
    p.drawText(QPointF(34, 264), "Version 0.1");
    return image;
}

// ---- the Help page ----------------------------------------------------------

struct HelpTool {
    int bitmap;
    const char* text;
};

class HelpWriter {
  public:
    explicit HelpWriter(QPainter& p) : p_(p) {}

    void Heading(const QString& text) {
        y_ += 10;
        p_.setFont(Face(17, true));
        p_.setPen(QColor(20, 50, 130));
        p_.drawText(QRectF(kMargin, y_, kWidth, 22), Qt::AlignLeft | Qt::AlignVCenter, text);
        y_ += 24;
        p_.setPen(QPen(QColor(20, 50, 130), 1));
        p_.drawLine(QPointF(kMargin, y_), QPointF(kMargin + kWidth, y_));
        y_ += 6;
    }
    void Paragraph(const QString& text, int indent = 0) {
        p_.setFont(Face(13));
        p_.setPen(Qt::black);
        const QRectF box(kMargin + indent, y_, kWidth - indent, 1000);
        const QRectF used = p_.boundingRect(box, Qt::TextWordWrap, text);
        p_.drawText(box, Qt::TextWordWrap, text);
        y_ += used.height() + 6;
    }
    void Tool(const HelpTool& tool) {
        const QImage icon = ToolImage(tool.bitmap);
        const double top = y_;
        p_.drawImage(QPointF(kMargin + 2, top + 1), icon);
        p_.setPen(QColor(128, 128, 128));
        p_.drawRect(QRectF(kMargin + 1.5, top + 0.5, icon.width() + 1, icon.height() + 1));
        Paragraph(tool.text, 34);
        y_ = std::max(y_, top + icon.height() + 6);
    }
    double Y() const { return y_; }
    void Skip(double dy) { y_ += dy; }

  private:
    static constexpr double kMargin = 18, kWidth = 462;
    QPainter& p_;
    double y_ = 0;
};

QImage Help(int w, int h) {
    QImage image(w, h, QImage::Format_RGB32);
    image.fill(QColor(252, 251, 245));
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.scale(w / 498.0, h / 1875.0);
    p.drawImage(QRectF(18, 14, 62, 54), Logo(62, 54));
    p.setPen(QColor(20, 50, 130));
    p.setFont(Face(22, true));
    p.drawText(QPointF(94, 40), "FlyWORD Plumet");
    p.setFont(Face(13));
    p.setPen(Qt::black);
    p.drawText(QPointF(94, 60), "3D text for your image: how the window works");

    HelpWriter out(p);
    out.Skip(80);
    out.Paragraph("The window shows the part of your image you selected, with the 3D text in "
                  "front of it. Change the text, its path, its surface and the scene with the four "
                  "pages at the top; move things in the view with the tools on the left; look "
                  "at the result with Preview, and choose OK to render it into your image.");

    out.Heading("Text");
    out.Paragraph("Type a line of up to 126 characters into the Text field and press Enter, or "
                  "move to another control, to see it. Letters typed into the field stay letters: "
                  "the tool keys work only while the focus is elsewhere.");
    out.Paragraph("Font lists the TrueType and Type 1 faces of your system. The letters are "
                  "extruded from the outlines of the face you choose.");

    out.Heading("Path");
    out.Paragraph("The letters stand on a path. Line, Ellipse, Wave, Decaying Wave, Bump, Helix, "
                  "Spherical Helix and Vortex each have two values (from 0 to 100) that shape "
                  "them: type a number, pick one from the list, or use the arrows beside it.");
    out.Paragraph("Convert... makes a custom path of the path you see, which you can then edit "
                  "point by point. New Path... draws a new one with the path tools, and Delete "
                  "Path... removes custom paths. Custom paths are kept under their names.");

    out.Heading("Surface");
    out.Paragraph("Color gives the letters the colours of the Faces and Sides buttons; click a "
                  "button to choose its colour. With Link on, the sides take the colour of the "
                  "faces. Clouds, Leopard Skin, Neon and Sunflower wrap a texture around the "
                  "letters, and New Texture... loads a picture of your own. Transparency lets "
                  "the image shine through the letters.");

    out.Heading("Scene");
    out.Paragraph("Ambience sets the colour of the light that falls everywhere, and Intensity its "
                  "strength. Add point lights with the light tool. Final Render chooses the "
                  "renderer of the finished picture; Options... next to it sets up that renderer "
                  "when it has settings.");

    out.Heading("Tools");
    out.Paragraph(
        "Choose a tool with its button or its key, then drag in the view. Double-click "
        "a text or camera tool to open Numeric Controls, where every value can be typed.");
    for (const HelpTool& t : {
             HelpTool{kBitmapSelectLight, "V  Select and move a point light. Delete removes the "
                                          "selected light, Ctrl+Delete all lights."},
             HelpTool{kBitmapAddLight, "L  Create a point light where you click (up to five)."},
             HelpTool{kBitmapMoveText, "W  Move the text along its path. Up and Right move it "
                                       "on, Down and Left back; with Ctrl they change the "
                                       "spacing of the letters."},
             HelpTool{kBitmapRotateText, "R  Rotate the letters around the path. Up and Down "
                                         "revolve them, Left and Right rotate them, Ctrl+Left "
                                         "and Ctrl+Right tilt them, 5 degrees a key."},
             HelpTool{kBitmapScaleText, "S  Change the width and height of the letters. Up and "
                                        "Down change the height, Left and Right the width, "
                                        "with Shift both at once."},
             HelpTool{kBitmapDepth, "D  Change the depth of the letters; the arrow keys too."},
             HelpTool{kBitmapMoveCamera, "M  Move the camera parallel to the screen."},
             HelpTool{kBitmapTruckCamera, "T  Move the camera towards the scene or away."},
             HelpTool{kBitmapRollCamera, "C  Roll the camera around its line of sight."},
             HelpTool{kBitmapOrbitCamera, "O  Orbit the camera around the scene."},
         })
        out.Tool(t);

    out.Heading("Path tools");
    out.Paragraph("With a custom path chosen, the Path page offers the tools that edit it:");
    for (const HelpTool& t : {
             HelpTool{kBitmapDragPoint, "Select and drag a control point."},
             HelpTool{kBitmapDragHandle, "Select and drag a curve handle."},
             HelpTool{kBitmapAddPoint, "Add a control point."},
             HelpTool{kBitmapDeletePoint, "Delete a control point (or press Delete)."},
             HelpTool{kBitmapDrawPath, "Draw a new path point by point."},
             HelpTool{kBitmapEllipsePath, "Create an elliptical path by dragging."},
             HelpTool{kBitmapPolygonPath, "Create a polygonal path; double-click the button to "
                                          "choose the number of sides, or a star."},
         })
        out.Tool(t);

    out.Heading("Views");
    out.Paragraph("View moves the camera to Home, Front, Top, Bottom, Left Side or Right Side. "
                  "Set View... keeps the camera as it stands under a name of your own; up to four "
                  "such views last while the window is open.");
    out.Paragraph("Image shows your image behind the scene; Text, Path, Lights and Grid show or "
                  "hide those parts of the scene while you work. Only the text goes into the "
                  "finished picture.");

    out.Heading("Numeric Controls, Options");
    out.Paragraph("Controls... opens Numeric Controls: the slide, spacing, angles, size and depth "
                  "of the text, and the camera's position, angle of view, roll and orbit, as "
                  "numbers that follow the tools while you drag. Reset All goes back to the "
                  "values the window started with.");
    out.Paragraph("Options... sets the size of the light icons and turns tool tips on or off; "
                  "Reset brings back the settings of a first start.");

    out.Heading("Preview, OK and Cancel");
    out.Paragraph("Preview renders the scene with the final renderer, as OK will; any change "
                  "afterwards returns to the working view. OK renders the text at full size "
                  "into your image and keeps all settings for the next time, so that repeating "
                  "the filter renders them again without the window. Cancel, or Escape and Yes, "
                  "closes the window and leaves the image as it was.");
    return image;
}

struct PictureEntry {
    int id, width, height;
    QImage (*draw)(int, int);
};
constexpr PictureEntry kPictures[] = {
    {kPictureLogo, 62, 54, Logo},
    {kPictureHelp, 498, 1875, Help},
    {kPictureAbout, 496, 282, About},
};
} // namespace

QImage LoadPicture(int id) {
    for (const PictureEntry& e : kPictures)
        if (e.id == id) return e.draw(e.width, e.height);
    return {};
}

QImage LoadPicture(int id, int width, int height) {
    if (width <= 0 || height <= 0) return {};
    for (const PictureEntry& e : kPictures)
        if (e.id == id) return e.draw(width, height);
    return {};
}
