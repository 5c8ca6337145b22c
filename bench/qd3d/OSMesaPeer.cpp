#define GL_GLEXT_PROTOTYPES 1
#include "bench/qd3d/OSMesaPeer.h"

#include <GL/gl.h>
#include <GL/glext.h>
#include <GL/osmesa.h>

OSMesaPeer::OSMesaPeer(const TextMesh& mesh, int w, int h) : width(w), height(h) {
    buffer.resize(static_cast<size_t>(w) * h * 4);
    OSMesaContext ctx = OSMesaCreateContextExt(OSMESA_BGRA, 24, 0, 0, nullptr);
    if (!ctx || !OSMesaMakeCurrent(ctx, buffer.data(), GL_UNSIGNED_BYTE, w, h)) {
        if (ctx) OSMesaDestroyContext(ctx);
        return;
    }
    context = ctx;
    OSMesaPixelStore(OSMESA_Y_UP, 0);
    glViewport(0, 0, w, h);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    // the same camera as the library's: 60 degrees vertical, hither 0.1, yon 100
    double f = 0.1 * 0.57735;
    double aspect = static_cast<double>(w) / h;
    glFrustum(-f * aspect, f * aspect, -f, f, 0.1, 100);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslatef(0, 0, -7);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_LIGHTING);
    glShadeModel(GL_SMOOTH);
    const float pos[3][4] = {{-6, 4, 6, 1}, {6, 4, 6, 1}, {0, -5, 5, 1}};
    const float white[4] = {1, 1, 1, 1}, black[4] = {0, 0, 0, 1};
    for (int i = 0; i < 3; ++i) {
        glEnable(GL_LIGHT0 + i);
        float p[4] = {pos[i][0], pos[i][1], pos[i][2], 1}; // moved by the modelview
        glLightfv(GL_LIGHT0 + i, GL_POSITION, p);
        glLightfv(GL_LIGHT0 + i, GL_DIFFUSE, white);
        glLightfv(GL_LIGHT0 + i, GL_SPECULAR, white);
        glLightfv(GL_LIGHT0 + i, GL_AMBIENT, black);
    }
    const float diffuse[4] = {0.9f, 0.6f, 0.2f, 1}, spec[4] = {0.5f, 0.5f, 0.5f, 1};
    glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, diffuse);
    glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, spec);
    // Blinn highlights spread wider than Phong ones: four times the exponent is close
    glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, 32);
    glGenBuffers(3, buffers);
    glBindBuffer(GL_ARRAY_BUFFER, buffers[0]);
    glBufferData(GL_ARRAY_BUFFER, mesh.positions.size() * 4, mesh.positions.data(), GL_STATIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, buffers[1]);
    glBufferData(GL_ARRAY_BUFFER, mesh.normals.size() * 4, mesh.normals.data(), GL_STATIC_DRAW);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, buffers[2]);
    glBufferData(GL_ELEMENT_ARRAY_BUFFER, mesh.indices.size() * 4, mesh.indices.data(),
                 GL_STATIC_DRAW);
    count = static_cast<int>(mesh.indices.size());
}

OSMesaPeer::~OSMesaPeer() {
    if (!context) return;
    glDeleteBuffers(3, buffers);
    OSMesaDestroyContext(static_cast<OSMesaContext>(context));
}

void OSMesaPeer::drawFrame() {
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glBindBuffer(GL_ARRAY_BUFFER, buffers[0]);
    glVertexPointer(3, GL_FLOAT, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, buffers[1]);
    glNormalPointer(GL_FLOAT, 0, nullptr);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, buffers[2]);
    glDrawElements(GL_TRIANGLES, count, GL_UNSIGNED_INT, nullptr);
    glFinish();
}
