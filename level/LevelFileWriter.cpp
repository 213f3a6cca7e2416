#include "level/LevelFileWriter.h"

#include "level/ByteIO.h"

namespace qb {

namespace {

template <typename R>
void writeBox(ByteWriter& w, const R& r) {
    w.F32(r.X);
    w.F32(r.Y);
    w.F32(r.Z);
    w.F32(r.scaleX);
    w.F32(r.scaleY);
    w.F32(r.scalez);
    w.I16(r.TextureA);
    w.I16(r.TextureB);
}

template <typename R>
void writeBlock(ByteWriter& w, const R& r) {
    writeBox(w, r);
    w.I16(r.TextureC);
    w.I16(r.TextureD);
    w.U8(r.ScaleTextureTop);
    w.U8(r.ScaleTextureSide);
    w.U8(r.ActionCode);
}

void writeTimes(ByteWriter& w, const FastestTimes& t) {
    for (const auto& n : t.Names) w.Fixed(n, 15);
    for (int32_t s : t.Seconds) w.I32(s);
    for (int32_t h : t.Hundredths) w.I32(h);
}

}  // namespace

std::vector<uint8_t> EncodeLevelRecord(const LevelRecord& rec, int16_t allStars) {
    std::vector<uint8_t> out;
    ByteWriter w(out);
    w.U8(rec.LeadByte);
    writeTimes(w, rec.Times);
    w.I16(allStars);
    w.U16(rec.TextureCount.VarType);
    w.Bytes(rec.TextureCount.Raw);
    for (size_t i = 1; i < rec.TextureNames.size(); ++i) w.Counted(rec.TextureNames[i]);
    w.Fixed(rec.Background, 50);
    // The upper indexes are written from the lists themselves so a record
    // can never announce more items than it holds.
    w.I32(static_cast<int32_t>(rec.Blocks.size()) - 1);
    for (const auto& b : rec.Blocks) writeBlock(w, b);
    w.I32(static_cast<int32_t>(rec.Platforms.size()) - 1);
    for (const auto& m : rec.Platforms) {
        writeBlock(w, m);
        w.U8(m.Mspeed);
        w.U8(m.Mdir);
        w.U8(m.Mdist);
        w.U8(m.MloopBack);
    }
    w.I32(static_cast<int32_t>(rec.Ramps.size()) - 1);
    for (const auto& r : rec.Ramps) {
        writeBox(w, r);
        w.U8(r.Rotation);
    }
    w.I32(static_cast<int32_t>(rec.Stars.size()) - 1);
    for (const auto& s : rec.Stars) {
        w.F32(s.X);
        w.F32(s.Y);
        w.F32(s.Z);
    }
    w.F32(rec.Settings.FileGravity);
    w.Counted(rec.Settings.SettingsText);
    for (uint32_t v : rec.Settings.Values) w.U32(v);
    return out;
}

std::vector<uint8_t> EncodeLevelFile(const LevelFile& file) {
    std::vector<std::vector<uint8_t>> records;
    records.reserve(file.Levels.size());
    for (size_t i = 0; i < file.Levels.size(); ++i)
        records.push_back(EncodeLevelRecord(file.Levels[i], i < file.AllStars.size() ? file.AllStars[i] : 0));

    std::vector<uint8_t> out;
    ByteWriter w(out);
    w.I32(static_cast<int32_t>(file.Levels.size()));
    for (int16_t z : file.ZoneComplete) w.I16(z);
    int64_t offset = 0;
    for (size_t i = 0; i < records.size(); ++i) {
        w.I32(static_cast<int32_t>(offset));
        w.U32(i < file.Index.size() ? file.Index[i].Reserved : 0);
        offset += static_cast<int64_t>(records[i].size());
    }
    for (const auto& r : records) w.Bytes(r);
    w.Bytes(file.Trailing);
    return out;
}

std::array<uint8_t, 69> EncodeFastestTimes(const FastestTimes& t) {
    std::vector<uint8_t> bytes;
    ByteWriter w(bytes);
    writeTimes(w, t);
    std::array<uint8_t, 69> out{};
    for (size_t i = 0; i < out.size(); ++i) out[i] = bytes[i];
    return out;
}

std::array<uint8_t, 12> EncodeZoneFlags(const std::array<int16_t, 6>& flags) {
    std::array<uint8_t, 12> out{};
    for (size_t i = 0; i < 6; ++i) {
        const auto v = static_cast<uint16_t>(flags[i]);
        out[2 * i] = static_cast<uint8_t>(v);
        out[2 * i + 1] = static_cast<uint8_t>(v >> 8);
    }
    return out;
}

}  // namespace qb
