// A quad whose corners arrive in clip space. Their texture coordinates transpose the pattern; they are handed through.

struct Vertex
{
    float3 position : POSITION;
    float2 textureCoordinate : TEXCOORD;
};

struct Corner
{
    float4 position : SV_POSITION;
    float2 textureCoordinate : TEXCOORD;
};

Corner main(Vertex vertex)
{
    Corner corner;
    corner.position = float4(vertex.position, 1.0f);
    corner.textureCoordinate = vertex.textureCoordinate;
    return corner;
}
