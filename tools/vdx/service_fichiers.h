// The files the service serves as they stand, built into the program from
// tools/vdx/service/.
#pragma once

namespace vdx {

// The OpenAPI description of the service (openapi.json).
extern const char DescriptionOpenApi[];
// The page that checks a prescription in a browser (page.html).
extern const char PageVerification[];

}  // namespace vdx
