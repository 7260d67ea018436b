// How quorin-io waits.
#pragma once
/// Sleeps between two looks at a segment, 2 ms.
void pause_between_looks();

/// The same, and throws `refusal` once nobody is left to read what print_patiently() prints.
void pause_between_printed_looks();
