#include "DxfExport.h"

#include "OutputFile.h"
#include "OutputTexts.h"
#include "RecordFile.h"
#include "RunTimeError.h"
#include "TranslationTexts.h"

namespace backplot {

void DxfExport::GetDXFCoords()
{
    TranslationState& s = translator_.State();
    try {
        // Only the positions and the arc values start afresh.
        s.CurX = s.CurY = s.CurZ = 1e-14;
        s.LastX = s.LastY = s.LastZ = 0;
        s.ArcRadius = s.ArcStartAngle = s.ArcEndAngle = 0;

        s.CollectDxf = true;

        // No record file yet (no program opened) is an empty one.
        const std::string path = translator_.RecordFilePath();
        if (!Translator::FileExists(path)) {
            s.CollectDxf = false;
            return;
        }
        RecordFileReader reader;
        reader.Open(path);

        // Every record's block again, as stored.
        const std::int16_t total = reader.RecordTotal();
        EntityRecord& record = translator_.Record();
        for (std::int32_t n = 1; n <= total; ++n) {
            reader.Read(n, record);
            // InterpretBlock clears the record buffer, so the block is copied out first.
            s.CurrentBlock.assign(record.BlockTextView());
            translator_.InterpretBlock(s.CurrentBlock);
        }

        reader.Close();
        s.CollectDxf = false;
    } catch (const std::exception&) {
        dialogs_.Message(texts::ErrorSavingDxf, texts::MessageTitle, MsgIcon::Critical, MsgButtons::Ok);
    }
}

void DxfExport::Finish()
{
    translator_.Dxf().Clear();
    translator_.State().CollectDxf = false;
}

void DxfExport::SaveAsDXF(ExportFileName& exportFileName, const std::string& workDir, const DxfCanvasScale& canvas)
{
    struct Cleanup {
        DxfExport& self;
        ~Cleanup() { self.Finish(); }
    } cleanup{*this};
    try {
        // The dialog, the kept name and the extension rule; the second filter entry
        // still writes DXF text.
        const std::optional<std::string> path =
            exportFileName.Choose(dialogs_, texts::DxfSaveTitle, workDir,
                                  {{texts::DxfFilterDxf, "*.dxf"}, {texts::DxfFilterBmp, "*.bmp"}}, ".dxf");
        if (!path)
            return;

        GetDXFCoords();

        // The file, silently left out when it cannot be written.
        std::string error;
        WriteTextFile(*path, DxfDocument(canvas, translator_.Dxf()), error);
    } catch (const std::exception&) {
        // Every failure of this command ends it without a word.
    }
}

std::string DxfExport::Document(const DxfCanvasScale& canvas)
{
    struct Cleanup {
        DxfExport& self;
        ~Cleanup() { self.Finish(); }
    } cleanup{*this};
    GetDXFCoords();
    return DxfDocument(canvas, translator_.Dxf());
}

bool DxfExport::ExportTo(const std::string& path, const DxfCanvasScale& canvas, std::string& error)
{
    return WriteTextFile(path, Document(canvas), error);
}

bool DxfExport::WriteTextFile(const std::string& path, const std::string& text, std::string& error)
{
    OutputFile file(path);
    if (file.Open() && file.Write(text.data(), text.size()) && file.Commit())
        return true;
    error = file.Error();
    return false;
}

} // namespace backplot
