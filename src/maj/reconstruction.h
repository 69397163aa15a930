// The rebuild of the product table from a raw file of its records: a file
// "VDXPRO.DAT" that holds, behind a header of any size, records of 236
// bytes laid end to end (what a damaged table's data or a copy of it
// leaves), turned again into the table with its code and label keys.
#pragma once

#include <cstdint>
#include <string>

namespace vdx::maj {

// RebuildVDXPRO_Vdx: 1 when the table is rebuilt and put in place of the
// raw file, 0 when the file can't be read or the table not written (after
// its message box). The steps of the creation go to the progress callback.
int32_t ReconstruitProduits(const std::string& repertoire);

}  // namespace vdx::maj
