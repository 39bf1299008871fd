// Text of brivet -help.
#pragma once

inline constexpr char kHelpText[] =
    R"(usage: brivet [options] INPUT [OUTPUT]
       brivet [options] -outdir DIR INPUT...

Translates an ISO 10303-21 (STEP) clear text file to an HTML page, to plain text,
to a summary in JSON, to a line drawing in SVG, to meshes in glTF, STL or OBJ, or
to STEP again:

  $ brivet bracket.stp
  bracket.html: 232 instances of 41 types from bracket.stp

Without OUTPUT, the result is written to the current directory, with the name of
INPUT and another extension. "-" is standard input or standard output. Input may
be compressed with gzip, or be a zip archive of one STEP file; output is
compressed if its name ends in .gz.

Options take one dash or two and can be abbreviated: -h, -vers. An
ambiguous abbreviation selects one of the options: -s is -set. An argument follows
as the next word or after "=": -write text, --write=text.

  -write html|text|step|json|svg|glb|stl|obj
                         the format to write; by default that of the extension of
                         OUTPUT, or html without OUTPUT
  -o FILE                another way to give OUTPUT
  -force                 overwrite an OUTPUT that is an existing STEP file
  -strict                treat a partial result as a failure: write no output
  -summary               print what is in INPUT: unit, extent, products, colours,
                         layers, properties and structure; write no OUTPUT, only
                         the log brivet_read.log
  -list                  print the same, the header, and counts by type; write no
                         OUTPUT, only the log brivet_read.log
  -report FILE           write the result as a line of JSON for each input
  -options FILE          read options of the translation from a file
  -set NAME=VALUE        set one option; later ones replace earlier ones
  -outdir DIR            translate all INPUT files to a folder: DIR/NAME.html
  -jobs N                with -outdir, the number of processes; by default one
                         for each processor
  -logdir DIR            write the logs to a folder
  -nolog                 write no logs
  -progress              show a progress bar on standard error; this is the
                         default on a terminal
  -quiet                 print nothing; the exit status reports the result
  -verbose               also print notes, for example about unused options
  -nosync                do not wait until the output is on the disk
  -tempspace SIZE        limit for a temporary copy of the input; 16G by default
  -formats               list the formats: name, title, what can be done, module,
                         version, extensions and path
  -settings [PATTERN]    list the names for -set that match PATTERN, for example
                         'Step*'; all without PATTERN
  -help [FORMAT]         print this text, or the options of a format
  -version               print the version
  --                     the following words are files, even with a leading dash

An options file has a line NAME=VALUE for each option. Lines that begin with #
or ; are comments:

  $ cat base.cfg
  # defaults of the drawing office
  AuthorName = "drawing office"
  Step.*.Writer.FileLineLength = 80
  $ brivet -options base.cfg -set SendingSystemName=cad7 bracket.stp new.stp

A value is an integer, a real number, On or Off, or a string, which may be in
double quotes. A name is a setting, alone or after a component, a representation
and a direction; * matches any of them. An unknown name is set with a warning that
suggests similar names.

brivet_read.log in the current directory is the log of the run, brivet_write.log
that of its writing phase. With -outdir they are DIR/NAME.read.log and
DIR/NAME.write.log. Environment variables:

  VRELLogLevel    what is logged: ALL, DEBUG, TEST, VERBOSE, INFO (the default),
                  ERROR, ABORT or NONE
  VRELTaskTiming  On: the log ends with the time of each task

The output file is replaced atomically: a run that fails leaves an existing one
unchanged. Ctrl-C stops a run within a second.

Exit status: 0 success;
1 error in an options file, an option or a format module; 2 wrong command line;
3 interrupted;
4 format module missing, or OUTPUT cannot represent INPUT; 7 out of memory;
8 partial: something was lost, and the output has the rest; 13 file not found;
14 file cannot be read; 15 output or temporary file cannot be written;
21 not a valid STEP file.
With several inputs it is that of the first one that failed, else 8 if one is
partial.

Errors and warnings are lines on standard error:

  part.stp:12: warning: expected ';', found '#5'
)";
