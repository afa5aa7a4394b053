#pragma once

namespace lumora {

/// Has curl overwrite whatever memory it gives back, for it keeps copies of the token in the
/// requests that it puts together. To be called before anything else of curl's; once is enough.
void makeCurlWipeItsMemory();

} // namespace lumora
