// The fixture of tests of the demo: its globals as in a new process.
#pragma once

#include "Fixture.h"

/// Callbacks that the demo registers appear by name in the list of effects.
class ShowFixture : public doubles::Fixture {
protected:
    ShowFixture();

    /// Also deletes the objects that the demo never frees.
    ~ShowFixture() override;

    /// Does what main does before it opens the display: sets `demo`, with its music.
    static void MakeDemo();

    /// Runs the loader, so that later frames only draw the show.
    static void Load();
};
