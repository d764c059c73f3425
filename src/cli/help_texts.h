// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The parts of --help that say more than the list of options.
namespace cli::help {

inline constexpr const char* kExitStatus = R"(Exit status:
  0    every patient analysed, whatever was found
  1    a run failed, the catalogue has errors, or an output could not be written;
       in a batch the other patients' results are written
  2    unusable arguments or input: unpaired, missing, no pair in the directory,
       no patient number in the name, faulty catalogue; nothing is written
  130  stopped by SIGINT: finished patients are written; a second SIGINT ends at once
  129, 143
       ended at once by SIGHUP or SIGTERM: output files are written all or none
)";

inline constexpr const char* kProgram = R"(
Examples:
  vexta analyze P_S1_L001_R1_001.fastq.gz
  vexta analyze-all --save run.vexta --report report.txt RUN_DIRECTORY
  vexta show --json run.json run.vexta
  vexta catalogue check --catalogue panel.txt

"vexta COMMAND --help" lists a command's options.

)";

inline constexpr const char* kAnalyze = R"(
Examples:
  vexta analyze P_S1_L001_R1_001.fastq.gz                 summary table on standard output
  vexta analyze --report P.txt --json P.json P_S1_L001_R2_001.fastq
  vexta analyze --set nD1Threshold=200 --summary - P_S1_L001_R1_001.fastq.gz

)";

inline constexpr const char* kAnalyzeAll = R"(
Examples:
  vexta analyze-all RUN_DIRECTORY                         summary table on standard output
  vexta analyze-all --summary run.tsv --report run.txt RUN_DIRECTORY
  vexta analyze-all --quiet --json - RUN_DIRECTORY | jq .

)";

inline constexpr const char* kShow = R"(
Examples:
  vexta show run.vexta                                    summary table on standard output
  vexta show --report run.txt --json run.json run.vexta

Exit status:
  0    the outputs were written
  1    an output could not be written
  2    unusable arguments, or a file that is no result document
)";

inline constexpr const char* kCatalogue = R"(
Examples:
  vexta catalogue list
  vexta catalogue check --catalogue panel.txt
)";

inline constexpr const char* kCatalogueList = R"(
Examples:
  vexta catalogue list
  vexta catalogue list --catalogue panel.txt | cut -f 2,3

Exit status:
  0    listed
  1    standard output could not be written
  2    unusable arguments or an unreadable catalogue
)";

inline constexpr const char* kCatalogueCheck = R"(
Examples:
  vexta catalogue check
  vexta catalogue check --catalogue panel.txt --set nD1Threshold=200

Exit status:
  0    no error, perhaps warnings
  1    at least one error
  2    unusable arguments or an unreadable catalogue
)";

} // namespace cli::help
