#pragma once

#include "foundation/WAttachable.h"

#include <cstdint>

// Obeys numbered commands or hands them up to its parent commander. Its
// attachments see each command first and may take it.
//
// The commander built last is the default commander, the parent that a new
// commander takes when none is given. When a commander dies, the default
// pointer clears if it named it, and commanders whose parent it was take its
// own parent instead, so no chain ever leads to a dead commander.
class WCommander : public WAttachable {
  public:
    // The parent is the current default commander.
    WCommander();
    explicit WCommander(WCommander* parent);
    ~WCommander() override;

    // Runs the attachments; when one of them took the command the answer is
    // true, otherwise it is that of PerformCommand.
    virtual bool DispatchCommand(std::int32_t command, void* parameter);
    // Hands the command to the parent's DispatchCommand; false without a
    // parent.
    virtual bool PerformCommand(std::int32_t command, void* parameter);

    // Replaces the parent. A parent that would close a loop (this commander
    // or one below it) is refused, and the parent stays as it was.
    void SetParentCommander(WCommander* parent);
    WCommander* GetParentCommander() const { return fParent; }

    static WCommander* GetDefaultCommander();

  private:
    void Register();

    WCommander* fParent;
    // Every live commander, newest first, so that a dying commander can unhook
    // those below it without any allocation.
    WCommander* fOlder = nullptr;
    WCommander* fNewer = nullptr;
};

class KCommandsHandler : public WCommander {
  public:
    KCommandsHandler() = default;
    explicit KCommandsHandler(WCommander* parent) : WCommander(parent) {}
};
