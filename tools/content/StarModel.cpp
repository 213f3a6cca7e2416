// The collectable star: a faceted five-pointed gem written as a text DirectX
// .x model (models/orb.x) with its golden skin (skins/orb.bmp). The game
// draws unlit, so the facets carry baked vertex colours: a fixed light from
// the upper left gives each facet its own brightness and the spinning star
// glints.
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
    return {a.x / l, a.y / l, a.z / l};
}

constexpr double Outer = 0.5, Inner = 0.22, Depth = 0.15;

struct Tri {
    V3 p[3];
    double shade;
};

std::vector<Tri> StarFacets() {
    std::vector<V3> rim;
    for (int i = 0; i < 10; ++i) {
        const double a = 3.14159265358979 / 2 + i * 3.14159265358979 / 5;  // first point straight up
        const double r = i % 2 == 0 ? Outer : Inner;
        rim.push_back({r * std::cos(a), r * std::sin(a), 0});
    }
    const V3 light = Norm({-0.45, 0.7, -0.55});
    std::vector<Tri> tris;
    for (double side : {-1.0, 1.0}) {  // front (towards -z) and back
        const V3 apex{0, 0, side * Depth};
        for (int i = 0; i < 10; ++i) {
            Tri t{{apex, rim[i], rim[(i + 1) % 10]}, 0};
            // Clockwise seen from outside: (p2 - p1) x (p3 - p1) points out.
            V3 n = Norm(Cross(Sub(t.p[1], t.p[0]), Sub(t.p[2], t.p[0])));
            if (n.z * side < 0) {
                std::swap(t.p[1], t.p[2]);
                n = {-n.x, -n.y, -n.z};
            }
            t.shade = 0.5 + 0.6 * std::max(0.0, Dot(n, light)) + (i % 2 == 0 ? 0.06 : -0.06);
            tris.push_back(t);
        }
    }
    return tris;
}

std::string Num(double v) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.6f", v);
    return buf;
}

void WriteModel(const std::string& path) {
    const std::vector<Tri> tris = StarFacets();
    const size_t nv = tris.size() * 3;
    std::ostringstream x;
    x << "xof 0303txt 0032\n\n";
    x << "Material StarGold {\n 1.000000;0.860000;0.320000;1.000000;;\n 40.000000;\n"
         " 1.000000;0.960000;0.800000;;\n 0.000000;0.000000;0.000000;;\n TextureFilename { \"orb.bmp\"; "
         "}\n}\n\n";
    x << "Mesh Star {\n " << nv << ";\n";
    for (size_t i = 0; i < nv; ++i) {
        const V3& p = tris[i / 3].p[i % 3];
        x << " " << Num(p.x) << ";" << Num(p.y) << ";" << Num(p.z) << ";" << (i + 1 < nv ? "," : ";") << "\n";
    }
    x << " " << tris.size() << ";\n";
    for (size_t t = 0; t < tris.size(); ++t)
        x << " 3;" << 3 * t << "," << 3 * t + 1 << "," << 3 * t + 2 << ";"
          << (t + 1 < tris.size() ? "," : ";") << "\n";
    x << " MeshMaterialList {\n  1;\n  " << tris.size() << ";\n";
    for (size_t t = 0; t < tris.size(); ++t) x << "  0" << (t + 1 < tris.size() ? "," : ";") << "\n";
    x << "  {StarGold}\n }\n";
    x << " MeshTextureCoords {\n  " << nv << ";\n";
    for (size_t i = 0; i < nv; ++i) {
        const V3& p = tris[i / 3].p[i % 3];
        x << "  " << Num(0.5 + p.x / (2 * Outer)) << ";" << Num(0.5 - p.y / (2 * Outer)) << ";"
          << (i + 1 < nv ? "," : ";") << "\n";
    }
    x << " }\n";
    x << " MeshVertexColors {\n  " << nv << ";\n";
    for (size_t i = 0; i < nv; ++i) {
        const double s = std::min(1.0, tris[i / 3].shade);
        x << "  " << i << ";" << Num(s) << ";" << Num(s) << ";" << Num(s) << ";1.000000;;"
          << (i + 1 < nv ? "," : ";") << "\n";
    }
    x << " }\n}\n";
    std::ofstream out(path, std::ios::binary);
    out << x.str();
    if (!out) throw std::runtime_error("cannot write " + path);
}

// Gold that brightens towards the middle, with a soft white highlight.
void WriteSkin(const std::string& path) {
    const int n = 64;
    Canvas c(n, n);
    for (int y = 0; y < n; ++y)
        for (int x = 0; x < n; ++x) {
            const float d = std::hypot(x + 0.5f - n / 2.0f, y + 0.5f - n / 2.0f) / (n / 2.0f);
            c.at(x, y) = Mix({255, 236, 150}, {230, 140, 20}, Smooth(0.0f, 1.0f, d));
        }
    c.disc(n * 0.4f, n * 0.36f, n * 0.09f, palette::White, 0.55f);
    c.saveBmp(path);
}
}  // namespace

void MakeStarModel(const std::string& gameDir) {
    std::filesystem::create_directories(gameDir + "models");
    std::filesystem::create_directories(gameDir + "skins");
    WriteModel(gameDir + "models/orb.x");
    WriteSkin(gameDir + "skins/orb.bmp");
}

}  // namespace qb::content
