// Nothing to see here: each call of threading.h is one of the system's, at whose cost a call of
// ours does not count.
#pragma once
