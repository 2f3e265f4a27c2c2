// What tests of the demo start from: its globals as a new process has them.
#pragma once

#include "Fixture.h"

/// The callbacks that the demo registers are written by their names.
class ShowFixture : public doubles::Fixture {
protected:
    ShowFixture();

    /// Also deletes what the demo leaves to the end of the process.
    ~ShowFixture() override;

    /// What main does before it opens the display: sets `demo`, with its music.
    static void MakeDemo();

    /// Has the loader run, so that later frames go straight to the show.
    static void Load();
};
