#pragma once

#include <memory>

#include "io/streams/stream_file.h"

class Export;

// The text files of the current model: opens the writers of the run and closes them. What an option switches
// off goes to the null device, so that the stages of the model don't ask.
class eModelFiles {
public:
    explicit eModelFiles(Export& run_) : run(run_) {}
    // Lets no writer outlive its stream, should a fatal error throw through the model.
    ~eModelFiles();
    eModelFiles(const eModelFiles&) = delete;
    eModelFiles& operator=(const eModelFiles&) = delete;

    // mdlWriter, with the comment lines that tell where the file comes from.
    void OpenModelText();
    // defWriter, with the block "entity" open. A file that exists already is the game's and stays as it is.
    void OpenEntityDefinition();
    // animWriter, if animations are exported.
    void OpenAnimationList();

    // Closes the block "entity" and both texts; only now the files get their bytes and their final names.
    void CloseTexts();
    // Writes the animation files and closes the list; a model without animations has none.
    void WriteAnimations();

private:
    Export& run;
    std::unique_ptr<xIo::eFileStream> defStream;
};
