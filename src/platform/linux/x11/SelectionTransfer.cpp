// SPDX-License-Identifier: MIT
#include "platform/linux/x11/SelectionTransfer.h"

namespace stowpocket {
namespace {

struct Property {
    SelectionAnswer answer;
    bool announcesPieces = false;
    std::size_t size = 0;
};

Property takeProperty(SelectionExchange& exchange, const SelectionSink& sink) {
    Property property;
    for (;;) {
        const SelectionExchange::Part part = exchange.take(property.size);
        property.answer = {std::nullopt, part.type, part.format};
        property.announcesPieces = part.announcesPieces;
        property.size += part.bytes.size();
        if (!part.isThere)
            property.answer.failure = SelectionFailure::refused;
        else if (!part.announcesPieces && !part.bytes.empty() && !sink(part.bytes))
            property.answer.failure = SelectionFailure::tooBig;
        if (property.answer.failure || part.announcesPieces || !part.isCut)
            return property;
    }
}

std::optional<SelectionFailure> failureOf(SelectionExchange::Sign sign) {
    using Sign = SelectionExchange::Sign;
    if (sign == Sign::come)
        return std::nullopt;
    return sign == Sign::timeUp ? SelectionFailure::late : SelectionFailure::refused;
}

SelectionAnswer takePieces(SelectionExchange& exchange, const SelectionSink& sink) {
    std::optional<SelectionAnswer> first;
    for (;;) {
        if (const auto failure = failureOf(exchange.awaitPiece()))
            return {failure};
        const Property piece = takeProperty(exchange, sink);
        if (piece.answer.failure || piece.announcesPieces)
            return {piece.answer.failure.value_or(SelectionFailure::refused)};
        if (!first)
            first = piece.answer;
        if (piece.size == 0)
            return *first;
    }
}

}  // namespace

SelectionAnswer transferSelection(SelectionExchange& exchange, const SelectionSink& sink) {
    if (const auto failure = failureOf(exchange.awaitAnswer()))
        return {failure};
    const Property property = takeProperty(exchange, sink);
    return property.announcesPieces ? takePieces(exchange, sink) : property.answer;
}

}  // namespace stowpocket
