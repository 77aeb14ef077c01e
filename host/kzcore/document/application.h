// AApplication: the running host.
//
// A program makes one before it loads plug-ins and keeps it for its life.
#pragma once

#include "kzcore/document/config.h"

class ADocView;

class AApplication {
public:
    // Becomes the application that GetApplication answers; the one before, if any, comes back on destruction.
    AApplication();
    ~AApplication();
    AApplication(const AApplication&) = delete;
    AApplication& operator=(const AApplication&) = delete;

    // Null when there is none.
    static AApplication* GetApplication();

    AConfig& getConfig() { return m_config; }
    ADocView* getActiveView() const { return m_activeView; }
    // Null: no view is active. The caller takes a view back before it destroys it.
    void setActiveView(ADocView* view) { m_activeView = view; }

private:
    AConfig m_config;
    ADocView* m_activeView = nullptr;
    AApplication* m_previous;
};
