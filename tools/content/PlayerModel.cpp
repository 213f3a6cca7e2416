// The car: a small hover-car written as a text DirectX .x model
// (models/player.x) with its skin (skins/player.bmp). It faces +z with its
// nose at z = 0 and fits the collision box: x -0.4..0.4, y 0..0.8,
// z -0.8..0. The game draws unlit, so every facet carries a baked shade
// from a fixed light above, to the left and in front.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "tools/content/Content.h"
#include "tools/content/WorldPaint.h"

namespace qb::content {

namespace {
struct V3 {
    double x, y, z;
};
V3 Sub(V3 a, V3 b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
V3 Cross(V3 a, V3 b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
double Dot(V3 a, V3 b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
V3 Norm(V3 a) {
    const double l = std::sqrt(Dot(a, a));
    return l == 0 ? a : V3{a.x / l, a.y / l, a.z / l};
}

// Where each kind of surface sits in the 128 x 128 skin.
enum Region { Paint, Glass, Steel, Glow };
struct Area {
    double u0, v0;  // top-left of a 0.5 x 0.5 quarter
};
constexpr Area Areas[4] = {{0.0, 0.0}, {0.5, 0.0}, {0.0, 0.5}, {0.5, 0.5}};

struct Vertex {
    V3 p;
    double u, v, shade;
};

// A six-sided piece: a bottom rectangle and a (possibly smaller, shifted)
// top rectangle, which gives boxes, wedges and tapered hulls.
struct Piece {
    double bx0, bx1, by, bz0, bz1;  // bottom: x range, height, z range
    double tx0, tx1, ty, tz0, tz1;  // top
    Region region;
};

class ModelBuilder {
public:
    void add(const Piece& s) {
        const V3 c[8] = {{s.bx0, s.by, s.bz0}, {s.bx1, s.by, s.bz0}, {s.bx1, s.by, s.bz1},
                         {s.bx0, s.by, s.bz1}, {s.tx0, s.ty, s.tz0}, {s.tx1, s.ty, s.tz0},
                         {s.tx1, s.ty, s.tz1}, {s.tx0, s.ty, s.tz1}};
        V3 centre{0, 0, 0};
        for (const V3& p : c) centre = {centre.x + p.x / 8, centre.y + p.y / 8, centre.z + p.z / 8};
        static const int quads[6][4] = {{0, 1, 2, 3}, {4, 5, 6, 7}, {0, 1, 5, 4},
                                        {3, 2, 6, 7}, {0, 3, 7, 4}, {1, 2, 6, 5}};
        for (const auto& q : quads) {
            tri(c[q[0]], c[q[1]], c[q[2]], centre, s.region);
            tri(c[q[0]], c[q[2]], c[q[3]], centre, s.region);
        }
    }

    std::string text() const {
        const size_t nv = verts_.size(), nf = nv / 3;
        std::ostringstream x;
        x << "xof 0303txt 0032\n\n";
        x << "Material CarSkin {\n 1.000000;1.000000;1.000000;1.000000;;\n 30.000000;\n"
             " 0.900000;0.900000;0.900000;;\n 0.000000;0.000000;0.000000;;\n TextureFilename { "
             "\"player.bmp\"; }\n}\n\n";
        x << "Mesh HoverCar {\n " << nv << ";\n";
        for (size_t i = 0; i < nv; ++i)
            x << " " << Num(verts_[i].p.x) << ";" << Num(verts_[i].p.y) << ";" << Num(verts_[i].p.z) << ";"
              << (i + 1 < nv ? "," : ";") << "\n";
        x << " " << nf << ";\n";
        for (size_t t = 0; t < nf; ++t)
            x << " 3;" << 3 * t << "," << 3 * t + 1 << "," << 3 * t + 2 << ";" << (t + 1 < nf ? "," : ";")
              << "\n";
        x << " MeshMaterialList {\n  1;\n  " << nf << ";\n";
        for (size_t t = 0; t < nf; ++t) x << "  0" << (t + 1 < nf ? "," : ";") << "\n";
        x << "  {CarSkin}\n }\n";
        x << " MeshTextureCoords {\n  " << nv << ";\n";
        for (size_t i = 0; i < nv; ++i)
            x << "  " << Num(verts_[i].u) << ";" << Num(verts_[i].v) << ";" << (i + 1 < nv ? "," : ";")
              << "\n";
        x << " }\n MeshVertexColors {\n  " << nv << ";\n";
        for (size_t i = 0; i < nv; ++i) {
            const double s = verts_[i].shade;
            x << "  " << i << ";" << Num(s) << ";" << Num(s) << ";" << Num(s) << ";1.000000;;"
              << (i + 1 < nv ? "," : ";") << "\n";
        }
        x << " }\n}\n";
        return x.str();
    }

    size_t triangles() const { return verts_.size() / 3; }

private:
    static std::string Num(double v) {
        char buf[32];
        std::snprintf(buf, sizeof buf, "%.6f", v);
        return buf;
    }

    void tri(V3 a, V3 b, V3 c, V3 centre, Region region) {
        V3 n = Cross(Sub(b, a), Sub(c, a));
        if (Dot(n, n) < 1e-14) return;  // a side squeezed to nothing
        // Clockwise seen from outside: (b - a) x (c - a) points away from the piece.
        const V3 mid{(a.x + b.x + c.x) / 3, (a.y + b.y + c.y) / 3, (a.z + b.z + c.z) / 3};
        if (Dot(n, Sub(mid, centre)) < 0) {
            std::swap(b, c);
            n = {-n.x, -n.y, -n.z};
        }
        n = Norm(n);
        const V3 light = Norm({-0.4, 0.85, -0.35});
        const double shade = std::min(1.0, 0.5 + 0.55 * std::max(0.0, Dot(n, light)));
        for (const V3& p : {a, b, c}) verts_.push_back(Vertex{p, 0, 0, shade});
        // Planar mapping across the face's two widest directions into the
        // piece's quarter of the skin.
        const double ax = std::fabs(n.x), ay = std::fabs(n.y), az = std::fabs(n.z);
        const Area& area = Areas[region];
        for (size_t i = verts_.size() - 3; i < verts_.size(); ++i) {
            const V3& p = verts_[i].p;
            double s, t;
            if (ay >= ax && ay >= az) {
                s = (p.x + 0.4) / 0.8;
                t = -p.z / 0.8;
            } else if (ax >= az) {
                s = -p.z / 0.8;
                t = 1 - p.y / 0.8;
            } else {
                s = (p.x + 0.4) / 0.8;
                t = 1 - p.y / 0.8;
            }
            verts_[i].u = area.u0 + 0.02 + 0.46 * std::clamp(s, 0.0, 1.0);
            verts_[i].v = area.v0 + 0.02 + 0.46 * std::clamp(t, 0.0, 1.0);
        }
    }

    std::vector<Vertex> verts_;
};

void BuildCar(ModelBuilder& m) {
    // Hull: wide and low, its top pulled back into a sloping nose.
    m.add({-0.30, 0.30, 0.10, -0.78, -0.03, -0.25, 0.25, 0.31, -0.74, -0.20, Paint});
    // Front skirt and splitter.
    m.add({-0.34, 0.34, 0.05, -0.22, 0.00, -0.32, 0.32, 0.15, -0.22, -0.05, Paint});
    // Cockpit canopy.
    m.add({-0.17, 0.17, 0.31, -0.58, -0.24, -0.12, 0.12, 0.46, -0.50, -0.34, Glass});
    // Hover pods on both sides.
    for (double side : {-1.0, 1.0}) {
        const double in = 0.27 * side, out = 0.40 * side;
        m.add({std::min(in, out), std::max(in, out), 0.03, -0.77, -0.10,
               std::min(in, out) + 0.01 * (side < 0 ? 1 : 0), std::max(in, out) - 0.01 * (side > 0 ? 1 : 0),
               0.21, -0.72, -0.16, Steel});
        // The glowing thruster at the pod's tail.
        const double g0 = 0.29 * side, g1 = 0.38 * side;
        m.add({std::min(g0, g1), std::max(g0, g1), 0.06, -0.80, -0.77, std::min(g0, g1), std::max(g0, g1),
               0.18, -0.80, -0.77, Glow});
    }
    // Rear wing on a single post.
    m.add({-0.03, 0.03, 0.28, -0.76, -0.68, -0.03, 0.03, 0.38, -0.76, -0.68, Steel});
    m.add({-0.33, 0.33, 0.38, -0.79, -0.67, -0.35, 0.35, 0.43, -0.80, -0.70, Paint});
    // The hover glow under the hull.
    m.add({-0.22, 0.22, 0.00, -0.68, -0.14, -0.24, 0.24, 0.03, -0.70, -0.12, Glow});
}

// The skin: orange paint with a white racing stripe, tinted glass, dark
// steel panels and a cyan glow, one quarter each.
void WriteSkin(const std::string& path) {
    const int n = 128, h = n / 2;
    Canvas c(n, n);
    const Noise grain(0xCA12u);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < h; ++x) {
            const float s = static_cast<float>(x) / (h - 1), t = static_cast<float>(y) / (h - 1);
            // Paint: bright across the top, deeper to the rear.
            Rgb paint = Mix(Rgb{255, 150, 40}, Rgb{220, 70, 30}, t * 0.8f);
            if (std::fabs(s - 0.5f) < 0.07f) paint = Rgb{250, 246, 236};
            if (std::fabs(std::fabs(s - 0.5f) - 0.1f) < 0.015f) paint = Rgb{40, 36, 48};
            c.at(x, y) = paint;
            // Glass: deep blue to cyan with a soft highlight band.
            Rgb glass = Mix(Rgb{20, 44, 90}, Rgb{70, 200, 240}, 1.0f - t);
            const float band = std::exp(-std::pow((s + t - 0.7f) * 6.0f, 2.0f));
            c.at(h + x, y) = Mix(glass, palette::White, 0.6f * band);
            // Steel: panels with seams and a little grain.
            Rgb steel = Mix(Rgb{70, 78, 96}, Rgb{40, 44, 58}, t);
            if (x % 16 == 0 || y % 20 == 0) steel = Rgb{22, 24, 32};
            c.at(x, h + y) = Scale(steel, 0.9f + 0.2f * grain.value(x / 4.0f, y / 4.0f));
            // Glow: hot white-cyan in the middle.
            const float r = std::hypot(s - 0.5f, t - 0.5f) * 2.0f;
            c.at(h + x, h + y) = Mix(Rgb{230, 255, 255}, palette::Cyan, Smooth(0.0f, 1.0f, r));
        }
    c.saveBmp(path);
}
}  // namespace

void MakePlayerModel(const std::string& gameDir) {
    std::filesystem::create_directories(gameDir + "models");
    std::filesystem::create_directories(gameDir + "skins");
    ModelBuilder m;
    BuildCar(m);
    const std::string path = gameDir + "models/player.x";
    std::ofstream out(path, std::ios::binary);
    out << m.text();
    if (!out) throw std::runtime_error("cannot write " + path);
    WriteSkin(gameDir + "skins/player.bmp");
}

}  // namespace qb::content
