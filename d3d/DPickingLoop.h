// The pick pass: what lies under a mouse event, with the rule that a body
// beats a widget handle lying in front of it.
#pragma once

#include "curves/KVector3D.h"
#include "d3d/DPickObject.h"
#include "d3d/DSubmitLoop.h"

#include <cstdint>

class DPickingLoop : public DSubmitLoop {
  public:
    // Bit 24 and up of a pick id name the part of a widget; 0 there is a body.
    static constexpr std::uint32_t kPartMask = 0xFF000000u;

    ~DPickingLoop() override;
    // Picks at the window point of `event` and reads the hits.
    virtual void PickAt(const MouseEvent& event);
    // Told the nearest hit of all when a body behind it was taken.
    virtual void HandleHit(DHitData& /*firstHit*/) {}
    // Whether a hit counts.
    virtual bool WantsHit(DHitData& /*hit*/) { return true; }
    virtual void BeginHits() {}
    virtual void EndHits() {}

    void StartPass() override;
    TQ3ViewStatus EndPass() override;
    // The geometry alone: styles play no part in a pick.
    void SubmitObjects() override;

    // Hits of the present pick; 0 when there is none.
    std::uint32_t GetHitCount() const;
    // Reads hit `index`; throws kFailLF3q when the library cannot.
    void GetHit(std::uint32_t index, DHitData& hit) const;

    DPickObject* pick = nullptr;
    float distance = 0;
    KVector3D hitPoint;
    TQ3Matrix4x4 hitMatrix{};
    // Whether the last PickAt accepted a hit.
    bool hit = false;

  private:
    void ReadHits();
    void Store(const DHitData& accepted);
};
