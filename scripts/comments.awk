# Shows doxygen the comments of a header: those that it would not take for documentation, and one comment for all of the
# functions that follow it up to the next empty line, type or access word. Adds no lines. Protected members are no part
# of what everybody may use.
FNR == 1 { printf "/** @file */ " }
/^ *\/\// { sub(/\/\//, "///"); commented = 1; ended = 0; print; next }
/^ *$|^ *#|\\$|:$|^ *(class|struct|enum|template|namespace) / { sub(/protected:/, "private:"); commented = 0; print; next }
(commented && ended) || /= default;$/ { sub(/^ */, "&/** as above */ ") }
{ ended = /[;}]( *\/\/.*)?$/; if (!/NOLINT/) sub(/; \/\/ /, "; ///< "); print }
