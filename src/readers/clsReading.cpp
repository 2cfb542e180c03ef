#include "readers/clsReading.h"

#include "readers/drivers/clsBioTekReaders.h"
#include "readers/drivers/clsBioWhittakerReader.h"
#include "readers/drivers/clsDemo2Reader.h"
#include "readers/drivers/clsDemoReader.h"
#include "readers/drivers/clsLabSystemsMC340.h"
#include "readers/drivers/clsLabSystemsReader.h"
#include "readers/drivers/clsMS2_Reader.h"
#include "readers/drivers/clsTHERMOmaxReader.h"

namespace {

struct CatalogueRow {
    qint32 id;
    const char *name;
    const char *defaultSettings;
};

// In id order. Every model starts without handshaking and with its first filter chosen.
const CatalogueRow kCatalogue[clsReading::kModelCount] = {
    {1, "Labsystems: Multiscan RC", "9600,N,8,1"},
    {2, "MS2 Reader", "2400,N,8,1"},
    {3, "BioWhittaker: Kinetic-QCL 10 710", "2400,N,8,1"},
    {4, "Molecular Devices Series I: EMAX, VMAX, ThermoMax", "9600,N,8,1"},
    {5, "Bio-Tek: ELx800", "9600,N,8,2"},
    {6, "Demo", "9600,N,8,1"},
    {7, "Demo2", "9600,N,8,1"},
    {8, "LabSystems MC 340 (Older LabSystems Readers)", "4800,N,8,1"},
    {9, "Bio-Tek: ELx800 UV", "9600,N,8,2"},
    {10, "Bio-Tek: ELx800 NB", "9600,N,8,2"},
    {11, "Bio-Tek: ELx808", "9600,N,8,2"},
    {12, "Bio-Tek: ELx808 UV", "9600,N,8,2"},
    {13, "Bio-Tek: EL311", "9600,N,8,2"},
    {14, "Bio-Tek: EL312", "9600,N,8,2"},
    {15, "Bio-Tek: EL340", "9600,N,8,2"},
    {16, "Bio-Tek: ELx808 I", "9600,N,8,2"},
    {17, "Bio-Tek: ELx808 UI", "9600,N,8,2"},
    {18, "Bio-Tek: PowerWave 340", "9600,N,8,2"},
    {19, "Bio-Tek: PowerWave 200", "9600,N,8,2"},
    {20, "Bio-Tek: EL312 I", "9600,N,8,2"},
    {21, "Bio-Tek: EL340 I", "9600,N,8,2"},
    {22, "Bio-Tek: PowerWave 340 I", "9600,N,8,2"},
    {23, "Bio-Tek: PowerWave 200 I", "9600,N,8,2"},
    {24, "Bio-Tek: uQuant", "9600,N,8,2"},
    {25, "Bio-Tek: PowerWave X/HT", "9600,N,8,2"},
    {26, "Bio-Tek: EL301", "9600,N,8,2"},
};

constexpr int kDefaultFlowControl = 0;
constexpr int kDefaultFilterNo = 1;

// The Molecular Devices readers come with their filter wheel; every other model starts
// with one placeholder filter the user fills in.
constexpr qint16 kMolecularDevicesModelID = 4;
const int kMolecularDevicesFilters[] = {405, 450, 490, 650};

void addModel(RecordSet &set, const CatalogueRow &row)
{
    set.addNew();
    set.setValue(u"ReaderModelID", row.id);
    set.setValue(u"ReaderModelName", QString::fromLatin1(row.name));
    set.setValue(u"DefaultSettings", QString::fromLatin1(row.defaultSettings));
    set.setValue(u"DefaultFlowControl", kDefaultFlowControl);
    set.setValue(u"DefaultFilterNo", kDefaultFilterNo);
}

void addFilter(RecordSet &set, int filterNo, int filterValue)
{
    set.addNew();
    set.setValue(u"FilterNo", filterNo);
    set.setValue(u"FilterValue", filterValue);
}

} // namespace

clsReading::clsReading(const ReaderEnvironment &environment) : mEnvironment(environment)
{
}

clsReading::~clsReading() = default;

std::unique_ptr<ReaderDriver> clsReading::makeDriver(qint32 modelId) const
{
    switch (modelId) {
    case 1: return std::make_unique<clsLabSystemsReader>(mEnvironment);
    case 2: return std::make_unique<clsMS2_Reader>(mEnvironment);
    case 3: return std::make_unique<clsBioWhittakerReader>(mEnvironment);
    case 4: return std::make_unique<clsTHERMOmaxReader>(mEnvironment);
    case 6: return std::make_unique<clsDemoReader>(mEnvironment);
    case 7: return std::make_unique<clsDemo2Reader>(mEnvironment);
    case 8: return std::make_unique<clsLabSystemsMC340>(mEnvironment);
    default: break;
    }
    // The Bio-Tek models have a numbering of their own: model 5 is number 1, models 9 to
    // 26 are numbers 2 to 19.
    if (modelId == 5 || (modelId >= 9 && modelId <= kModelCount)) {
        auto bioTek = std::make_unique<clsBioTekReaders>(mEnvironment);
        bioTek->setReaderType(qint16(modelId == 5 ? 1 : modelId - 7));
        return bioTek;
    }
    return nullptr;
}

bool clsReading::SetReader(qint32 modelId)
{
    std::unique_ptr<ReaderDriver> driver = makeDriver(modelId);
    if (!driver)
        return false;
    currentReader = std::move(driver);
    return true;
}

RecordSet clsReading::getDefaultFilters(qint16 modelId)
{
    RecordSet set({QStringLiteral("FilterNo"), QStringLiteral("FilterValue")});
    if (modelId == kMolecularDevicesModelID) {
        for (int i = 0; i < 4; ++i)
            addFilter(set, i + 1, kMolecularDevicesFilters[i]);
    } else if (modelId >= 1 && modelId <= kModelCount) {
        addFilter(set, 1, 0);
    }
    return set;
}

RecordSet clsReading::getReaderModelInfo(qint16 modelId)
{
    RecordSet set({QStringLiteral("ReaderModelID"), QStringLiteral("ReaderModelName"),
                   QStringLiteral("DefaultSettings"), QStringLiteral("DefaultFlowControl"),
                   QStringLiteral("DefaultFilterNo")});
    for (const CatalogueRow &row : kCatalogue) {
        if (modelId == 0 || modelId == row.id)
            addModel(set, row);
    }
    if (set.recordCount() == 0)
        throw RecordSetError(
            QStringLiteral("There is no reader model %1 in the catalogue: the set of models is empty.").arg(modelId));
    set.moveFirst();
    return set;
}
